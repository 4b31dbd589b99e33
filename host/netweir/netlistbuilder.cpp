// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "netlistbuilder.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/store/netliststore.h>

#include <cstdlib>
#include <map>

namespace NETWEIR {

namespace {

/// Reading in this thread may end here. Long names count more.
void checkGuard(const QString &name)
{
    constexpr int LettersOfWork = 256;
    Internal::ReadGuard::check(1 + name.size() / LettersOfWork);
}

} // namespace

struct NetlistBuilder::Private
{
    std::unique_ptr<RtlNetlist::Private> store = std::make_unique<RtlNetlist::Private>();
    std::map<std::vector<int>, quint32> shapes; ///< The numbers of the lists in the store.

    quint32 shapeOf(const std::vector<int> &lengths)
    {
        const auto added = shapes.emplace(lengths, quint32(store->nameShapes.size()));
        if (added.second)
            store->nameShapes.push_back(lengths);
        return added.first->second;
    }

    /// A net of @p node that is in no list yet. @p name must live as long as the net.
    RtlNet *newNet(const Hierachy *node, const QString *name, NetMarks marks)
    {
        RtlNet *net = store->nets.add();
        net->m_prefix = node->m_prefix;
        net->m_name = name;
        net->m_excludedForProbeIn = marks.excludedForProbeIn;
        net->m_excludedForProbeOut = marks.excludedForProbeOut;
        net->m_processWrites = quint32(marks.processWrites);
        return net;
    }
};

NetlistBuilder::NetlistBuilder(const QString &topModule)
    : d(std::make_unique<Private>())
{
    addHierachy(nullptr, topModule, topModule);
}

NetlistBuilder::~NetlistBuilder() = default;

Hierachy *NetlistBuilder::top() const
{
    return d->store->nodes.at(0);
}

Hierachy *NetlistBuilder::addHierachy(Hierachy *parent, const QString &instName,
                                      const QString &moduleName)
{
    Hierachy *node = d->store->nodes.add();
    node->m_instName = instName;
    node->m_moduleName = moduleName;
    node->m_parent = parent;
    node->m_isVhdl = parent && parent->m_isVhdl;
    checkGuard(instName);
    node->m_prefix = &d->store->prefixes.emplace_back(parent ? parent->m_prefix : nullptr, instName,
                                                      &d->store->texts);
    if (parent)
        parent->m_children.append(node);
    return node;
}

RtlNet *NetlistBuilder::addNet(Hierachy *node, const QString &name, NetMarks marks)
{
    checkGuard(name);
    RtlNet *net = d->newNet(node, &d->store->names.emplace_back(name), marks);
    node->m_nets.append(net);
    return net;
}

RtlNetBus *NetlistBuilder::addBus(Hierachy *node, const QString &name, int left, int right,
                                  const std::vector<NetMarks> &marks)
{
    checkGuard(name);
    const int step = left > right ? -1 : 1;
    const int width = std::abs(left - right) + 1;

    RtlNetBus *bus = d->store->buses.add();
    bus->m_prefix = node->m_prefix;
    bus->m_name = name;
    bus->m_left = left;
    bus->m_right = right;
    bus->m_nets.reserve(width);
    for (int i = 0; i < width; ++i) {
        NetMarks mark;
        if (!marks.empty())
            mark = Internal::itemAt(marks, marks.size() == 1 ? 0 : i);
        Internal::ReadGuard::check();
        RtlNet *bit = d->newNet(node, &bus->m_name, mark);
        bit->m_isBit = true;
        bit->m_index = left + i * step;
        bus->m_nets.append(bit);
        bus->m_excludedForProbeIn |= mark.excludedForProbeIn;
        bus->m_excludedForProbeOut |= mark.excludedForProbeOut;
    }
    node->m_buses.append(bus);
    return bus;
}

void NetlistBuilder::setVhdl(Hierachy *node, bool isVhdl)
{
    node->m_isVhdl = isVhdl;
}

void NetlistBuilder::setIdentifiers(Hierachy *node, const std::vector<int> &lengths)
{
    node->m_nameShape = d->shapeOf(lengths);
}

void NetlistBuilder::setIdentifiers(RtlNet *net, const std::vector<int> &lengths)
{
    net->m_nameShape = d->shapeOf(lengths);
}

void NetlistBuilder::setIdentifiers(RtlNetBus *bus, const std::vector<int> &lengths)
{
    bus->m_nameShape = d->shapeOf(lengths);
    for (RtlNet *net : qAsConst(bus->m_nets))
        net->m_nameShape = bus->m_nameShape;
}

void NetlistBuilder::setUsesJtagPrimitive(bool uses)
{
    d->store->usesJtagPrimitive = uses;
}

std::unique_ptr<RtlNetlist> NetlistBuilder::take()
{
    return std::unique_ptr<RtlNetlist>(new RtlNetlist(std::move(d->store)));
}

} // namespace NETWEIR
