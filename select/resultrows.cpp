// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "resultrows.h"

#include "netsearch.h"

#include <probes/signalrow.h>
#include <probes/signaltree.h>
#include <sdk/netweir.h>
#include <widgets/treerows.h>

#include <QIcon>
#include <QTreeWidgetItem>

#include <algorithm>
#include <typeinfo>

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

    Source *source() const { return m_source; }

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

    bool m_usesShortName : 1;
    bool m_isMember : 1;
    ProbeType m_type : 8;
    Source *m_source;
};

/// @p row when it still shows a net or bus as it was made.
template <typename Source>
const SourceRow<Source> *unchanged(const QTreeWidgetItem *row)
{
    // A dynamic_cast takes longer than all the rest.
    if (typeid(*row) != typeid(SourceRow<Source>))
        return nullptr;
    const auto *sourceRow = static_cast<const SourceRow<Source> *>(row);
    return sourceRow->computesAll() ? sourceRow : nullptr;
}

using Holds = ComputedSignalRow::Holds;

QTreeWidgetItem *newRow(NETWEIR::RtlNet *net, Style style)
{
    return new SourceRow(net, style, Holds::Item);
}

QTreeWidgetItem *newRow(NETWEIR::RtlNetBus *bus, Style style, RowNumbers *numbers)
{
    auto *row = new SourceRow(bus, style, Holds::Item);
    numbers->tell(row);
    const auto &nets = bus->nets();
    const Holds holds = style.membersHoldItems ? Holds::Item : Holds::Nothing;
    for (NETWEIR::RtlNet *net : nets)
        row->addChild(new SourceRow(net, style, holds, true));
    return row;
}

/// Rows for @p buses and then for @p nets.
QList<QTreeWidgetItem *> newRows(const QList<NETWEIR::RtlNet *> &nets,
                                 const QList<NETWEIR::RtlNetBus *> &buses, Style style)
{
    QList<QTreeWidgetItem *> rows;
    rows.reserve(nets.size() + buses.size());
    RowNumbers numbers;
    for (NETWEIR::RtlNetBus *bus : buses)
        rows.append(newRow(bus, style, &numbers));
    for (NETWEIR::RtlNet *net : nets)
        rows.append(newRow(net, style));
    return rows;
}

/// What stands for a result without a signal.
SignalItem signalNamed(const QString &name)
{
    SignalItem item;
    item.name = name;
    item.kind = SignalItem::Bus;
    return item;
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
    return signalNamed(row->data(0, Qt::DisplayRole).toString());
}

SignalItem ResultSignals::of(const QTreeWidgetItem *row)
{
    if (m_parent && row->parent() == m_parent) {
        const auto *netRow = unchanged<NETWEIR::RtlNet>(row);
        const SignalItem *member = netRow ? memberFor(netRow->source()) : nullptr;
        if (member)
            return netRow->holds() == Holds::Item ? *member : signalNamed(member->name);
    }
    SignalItem item = signalOfResult(row);
    if (!item.members.isEmpty())
        remember(row, item.members);
    return item;
}

void ResultSignals::remember(const QTreeWidgetItem *row, const QList<SignalItem> &members)
{
    const auto *busRow = unchanged<NETWEIR::RtlNetBus>(row);
    m_parent = busRow;
    m_members = members;
    m_nets.clear();
    m_next = 0;
    if (busRow) {
        const auto &nets = busRow->source()->nets();
        m_nets.assign(nets.begin(), nets.end());
    }
}

/// Nothing when no member is left that is @p net.
const SignalItem *ResultSignals::memberFor(NETWEIR::RtlNet *net)
{
    const auto same = std::find(m_nets.cbegin() + std::ptrdiff_t(m_next), m_nets.cend(), net);
    m_next = std::size_t(same - m_nets.cbegin());
    return same == m_nets.cend() ? nullptr : &m_members.at(int(m_next));
}

} // namespace TARN
