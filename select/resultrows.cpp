// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "resultrows.h"

#include "netsearch.h"

#include <probes/signalrow.h>
#include <probes/signaltree.h>
#include <sdk/netweir.h>

#include <QIcon>
#include <QTreeWidgetItem>

#include <algorithm>

namespace TARN {

namespace {

// What the rows take from a net or a bus.

QString fullName(NETWEIR::RtlNet *net)
{
    return net->fullPathName();
}

QString fullName(NETWEIR::RtlNetBus *bus)
{
    return bus->fullBusName();
}

QString shortName(NETWEIR::RtlNet *net)
{
    return net->name();
}

QString shortName(NETWEIR::RtlNetBus *bus)
{
    return bus->BusName();
}

/// How the rows of a result show their nets and buses.
struct Style
{
    ProbeType type;
    bool usesShortNames;
    bool membersHoldItems;
};

/// The row of a net or a bus. It asks the netlist for names and members whenever they are needed,
/// which saves several hundred bytes in each of up to a million rows; so the netlist must not go
/// while such a row is shown.
template <typename Source>
class SourceRow final : public ComputedSignalRow
{
public:
    SourceRow(Source *source, Style style, Holds holds, bool isMember = false)
        : ComputedSignalRow({!isExcluded(source, style.type), true, false}, holds, 0)
        , m_usesShortName(style.usesShortNames)
        , m_isMember(isMember)
        , m_type(style.type)
        , m_source(source)
    {
    }

private:
    SignalItem signal() const override
    {
        SignalItem item = signalOf(m_source, m_type);
        if (m_isMember)
            item.kind = SignalItem::Bus;
        return item;
    }
    QString shownText() const override
    {
        return m_usesShortName ? shortName(m_source) : fullName(m_source);
    }

    bool m_usesShortName;
    bool m_isMember;
    ProbeType m_type;
    Source *m_source;
};

using Holds = ComputedSignalRow::Holds;

QTreeWidgetItem *newRow(NETWEIR::RtlNet *net, Style style)
{
    return new SourceRow(net, style, Holds::Item);
}

QTreeWidgetItem *newRow(NETWEIR::RtlNetBus *bus, Style style)
{
    auto *row = new SourceRow(bus, style, Holds::Item);
    const auto &nets = bus->nets();
    QList<QTreeWidgetItem *> members;
    members.reserve(nets.size());
    for (NETWEIR::RtlNet *net : nets)
        members.append(
            new SourceRow(net, style, style.membersHoldItems ? Holds::Item : Holds::Nothing, true));
    row->addChildren(members);
    return row;
}

/// Rows for @p buses and then for @p nets.
QList<QTreeWidgetItem *> newRows(const QList<NETWEIR::RtlNet *> &nets,
                                 const QList<NETWEIR::RtlNetBus *> &buses, Style style)
{
    QList<QTreeWidgetItem *> rows;
    rows.reserve(nets.size() + buses.size());
    for (NETWEIR::RtlNetBus *bus : buses)
        rows.append(newRow(bus, style));
    for (NETWEIR::RtlNet *net : nets)
        rows.append(newRow(net, style));
    return rows;
}

} // namespace

QList<QTreeWidgetItem *> newResultRows(const QList<NETWEIR::RtlNet *> &nets,
                                       const QList<NETWEIR::RtlNetBus *> &buses, ProbeType type)
{
    return newRows(nets, buses, {type, false, false});
}

QTreeWidgetItem *newModuleRow(const ModuleForWidget &module, ProbeType type)
{
    auto *row = new QTreeWidgetItem({module.name});
    row->setToolTip(0, module.name);
    row->setIcon(0, QIcon(QStringLiteral(":/lumoins/image/module.png")));
    row->setFlags(row->flags() & ~Qt::ItemIsSelectable);
    // One by one, so that each knows its number: see addTopLevelRows().
    const QList<QTreeWidgetItem *> rows = newRows(module.nets, module.buses, {type, true, true});
    for (QTreeWidgetItem *child : rows)
        row->addChild(child);
    return row;
}

SignalItem signalOfResult(const QTreeWidgetItem *row)
{
    if (std::optional<SignalItem> stored = storedSignal(row))
        return *std::move(stored);
    SignalItem item;
    item.name = row->data(0, Qt::DisplayRole).toString();
    item.kind = SignalItem::Bus;
    return item;
}

SignalItem ResultSignals::of(const QTreeWidgetItem *row)
{
    SignalItem item = signalOfResult(row);
    if (!item.members.isEmpty()) {
        m_parent = row;
        m_members = item.members;
        m_next = 0;
    } else if (row->parent() == m_parent) {
        const auto same =
            std::find_if(m_members.cbegin() + m_next, m_members.cend(),
                         [&item](const SignalItem &member) { return member.name == item.name; });
        m_next = int(same - m_members.cbegin());
        if (same != m_members.cend())
            item.name = same->name;
    }
    return item;
}

} // namespace TARN
