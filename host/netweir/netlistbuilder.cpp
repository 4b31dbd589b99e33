// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "netlistbuilder.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/store/netliststore.h>

#include <algorithm>
#include <cstdlib>
#include <map>

namespace NETWEIR {

namespace {

/// @p prefix and @p rest in one allocation of the exact size, which saves memory in every net.
QString joined(const QString &prefix, QStringView rest)
{
    QString text(prefix.size() + int(rest.size()), Qt::Uninitialized);
    std::copy(rest.begin(), rest.end(), std::copy(prefix.begin(), prefix.end(), text.begin()));
    return text;
}

/// The text "[index]", written without a heap allocation.
class BitSuffix
{
public:
    explicit BitSuffix(int index)
    {
        *--m_begin = QLatin1Char(']');
        unsigned rest = index < 0 ? 0U - unsigned(index) : unsigned(index);
        do {
            *--m_begin = QLatin1Char(char('0' + rest % 10));
            rest /= 10;
        } while (rest != 0);
        if (index < 0)
            *--m_begin = QLatin1Char('-');
        *--m_begin = QLatin1Char('[');
    }

    QStringView view() const { return {m_begin, m_text + Capacity}; }

private:
    static constexpr int Capacity = 16;
    QChar m_text[Capacity];
    QChar *m_begin = m_text + Capacity;
};

/// Reading in this thread may end here. The memory for names grows with the square of the depth of
/// the hierarchy, so long names count more.
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

    RtlNet *addNet(const QString &fullPathName, int nameOffset, NetMarks marks)
    {
        checkGuard(fullPathName);
        RtlNet *net = store->nets.add();
        net->m_fullPathName = fullPathName;
        net->m_nameOffset = nameOffset;
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
    checkGuard(parent ? parent->m_prefix : instName);
    node->m_prefix = (parent ? parent->m_prefix : QString()) + instName + QLatin1Char('/');
    if (parent)
        parent->m_children.append(node);
    return node;
}

RtlNet *NetlistBuilder::addNet(Hierachy *node, const QString &name, NetMarks marks)
{
    RtlNet *net = d->addNet(joined(node->m_prefix, name), node->m_prefix.size(), marks);
    node->m_nets.append(net);
    return net;
}

RtlNetBus *NetlistBuilder::addBus(Hierachy *node, const QString &name, int left, int right,
                                  const std::vector<NetMarks> &marks)
{
    const QString path = joined(node->m_prefix, name);
    const int offset = node->m_prefix.size();
    const int step = left > right ? -1 : 1;
    const int width = std::abs(left - right) + 1;

    RtlNetBus *bus = d->store->buses.add();
    bus->m_fullBusName =
        QStringLiteral("%1[%2:%3]").arg(path, QString::number(left), QString::number(right));
    bus->m_nameOffset = offset;
    bus->m_nets.reserve(width);
    for (int i = 0; i < width; ++i) {
        NetMarks mark;
        if (!marks.empty())
            mark = Internal::itemAt(marks, marks.size() == 1 ? 0 : i);
        bus->m_nets.append(
            d->addNet(joined(path, BitSuffix(left + i * step).view()), offset, mark));
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
