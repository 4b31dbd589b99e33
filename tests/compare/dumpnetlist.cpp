// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "dumpnetlist.h"

#include "dump.h"

#include <netweir/hierachy.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>

#include <algorithm>

using NETWEIR::Hierachy;
using NETWEIR::RtlNet;
using NETWEIR::RtlNetBus;
using NETWEIR::RtlNetlist;

namespace TarnCompare {

NumberedNetlist::NumberedNetlist(RtlNetlist *netlist)
    : m_netlist(netlist)
{
    QVector<Hierachy *> open{netlist->top()};
    while (!open.isEmpty()) {
        Hierachy *node = open.takeLast();
        m_nodes.append(node);
        for (RtlNet *net : node->nets())
            m_nets.append(net);
        for (RtlNetBus *bus : node->buses()) {
            m_buses.append(bus);
            for (RtlNet *net : bus->nets())
                m_nets.append(net);
        }
        const QList<Hierachy *> children = node->children();
        for (int i = children.size(); i > 0; --i)
            open.append(children.at(i - 1));
    }
    m_numbers.reserve(m_nodes.size() + m_nets.size() + m_buses.size());
    for (const Hierachy *node : qAsConst(m_nodes))
        m_numbers.insert(node, m_numbers.size());
    for (const RtlNetBus *bus : qAsConst(m_buses))
        m_numbers.insert(bus, m_numbers.size());
    for (const RtlNet *net : qAsConst(m_nets))
        m_numbers.insert(net, m_numbers.size());
}

QString NumberedNetlist::numberOf(const void *object) const
{
    if (!object)
        return QStringLiteral("none");
    const auto found = m_numbers.constFind(object);
    return found == m_numbers.constEnd() ? QStringLiteral("?") : QString::number(*found);
}

namespace {

template <typename Object>
QString stepsOf(const RtlNetlist *netlist, const Object *object)
{
    QString text;
    for (const NETWEIR::NameStep &step : netlist->nameStepsOf(object))
        text += quoted(step.identifier) + step.indexes + QLatin1Char('.');
    return text;
}

template <typename Object>
QString marksOf(const Object *object)
{
    return QStringLiteral("in%1 out%2")
        .arg(int(object->excludedForProbeIn()))
        .arg(int(object->excludedForProbeOut()));
}

class NetlistDump
{
public:
    NetlistDump(Dump *dump, const NumberedNetlist &design)
        : m_dump(dump)
        , m_design(design)
        , m_netlist(design.netlist())
    {
    }

    void writeNode(const Hierachy *node)
    {
        m_dump->line(QStringLiteral("NODE %1 %2 : %3 below %4 vhdl%5 %6 children %7")
                         .arg(m_design.numberOf(node), quoted(node->instName()),
                              quoted(node->moduleName()), m_design.numberOf(node->parent()))
                         .arg(int(node->isVhdl()))
                         .arg(stepsOf(m_netlist, node), m_design.numbersOf(node->children())));
        for (const RtlNet *net : node->nets())
            writeNet("NET", net);
        for (const RtlNetBus *bus : node->buses())
            writeBus(bus);
    }

private:
    void writeNet(const char *kind, const RtlNet *net)
    {
        const QString path = net->fullPathName();
        m_dump->line(
            QStringLiteral("%1 %2 %3 = %4 %5 writes%6 %7 found %8")
                .arg(QLatin1String(kind), m_design.numberOf(net), quoted(path), quoted(net->name()),
                     marksOf(net))
                .arg(int(net->processWrites()))
                .arg(stepsOf(m_netlist, net), m_design.numberOf(m_netlist->findNet(path))));
    }

    void writeBus(const RtlNetBus *bus)
    {
        m_dump->line(QStringLiteral("BUS %1 %2 = %3 %4 %5 members %6")
                         .arg(m_design.numberOf(bus), quoted(bus->fullBusName()),
                              quoted(bus->BusName()), marksOf(bus), stepsOf(m_netlist, bus))
                         .arg(bus->nets().size()));
        for (const RtlNet *net : bus->nets())
            writeNet("MEMBER", net);
    }

    Dump *m_dump;
    const NumberedNetlist &m_design;
    RtlNetlist *m_netlist;
};

/// The subtrees of a node as the operations for that return them.
void writeSubtree(Dump *dump, const NumberedNetlist &design, const Hierachy *node)
{
    LongText text;
    for (const RtlNet *net : node->singleNetsIncludeSub())
        text.line(design.numberOf(net));
    text.line(QStringLiteral("buses"));
    for (const RtlNetBus *bus : node->netbusesIncludeSub())
        text.line(design.numberOf(bus));
    dump->line(QStringLiteral("SUBTREE of %1").arg(design.numberOf(node)));
    text.writeTo(dump);
}

} // namespace

QString alike(const QString &name, Choice *choice)
{
    QString changed = name;
    const int place = choice->below(name.size());
    switch (choice->below(6)) {
    case 0:
        changed.remove(place, 1);
        break;
    case 1:
        changed.insert(place, choice->any(QStringLiteral("/.[]0x ")));
        break;
    case 2:
        changed.chop(1 + choice->below(4));
        break;
    case 3:
        changed += choice->any(QStringLiteral("/[0"));
        break;
    case 4:
        changed = name.mid(place);
        break;
    default:
        changed = choice->chance(50) ? name.toUpper() : name + name;
    }
    return changed;
}

void dumpNetlist(Dump *dump, const NumberedNetlist &design, Choice *choice)
{
    RtlNetlist *netlist = design.netlist();
    dump->line(QStringLiteral("JTAG %1").arg(int(netlist->usesJtagPrimitive())));
    NetlistDump nodes(dump, design);
    for (const Hierachy *node : design.nodes())
        nodes.writeNode(node);
    constexpr int Subtrees = 60;
    writeSubtree(dump, design, netlist->top());
    for (int i = 0; i < std::min(Subtrees, design.nodes().size()); ++i)
        writeSubtree(dump, design, choice->any(design.nodes()));
    constexpr int WrongNames = 300;
    for (int i = 0; i < WrongNames && !design.nets().isEmpty(); ++i) {
        const QString name = alike(choice->any(design.nets())->fullPathName(), choice);
        dump->line(QStringLiteral("FIND %1: %2")
                       .arg(quoted(name), design.numberOf(netlist->findNet(name))));
    }
    for (const RtlNetBus *bus : design.buses()) {
        if (netlist->findNet(bus->fullBusName()))
            dump->line(QStringLiteral("FIND bus %1").arg(design.numberOf(bus)));
    }
    dump->line(QStringLiteral("FIND empty %1").arg(design.numberOf(netlist->findNet(QString()))));
}

} // namespace TarnCompare
