// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <model/netsignals.h>

#include <QList>

#include <cstddef>
#include <vector>

class QTreeWidgetItem;

namespace TARN {

struct ModuleForWidget;

// What a search has found, as rows. They refer to the nets and buses, so the netlist must not go
// while they are shown; they may be deleted later. Clones have values of their own.

/// Rows, owned by the caller, for @p buses and then for @p nets, with full names. Those of buses
/// know their numbers (RowNumbers).
QList<QTreeWidgetItem *> newResultRows(const QList<NETWEIR::RtlNet *> &nets,
                                       const QList<NETWEIR::RtlNetBus *> &buses, ProbeType type);

/// A row, owned by the caller, for @p module, which cannot be chosen, with rows for its own buses
/// and nets under their short names. Sub-modules get none.
QTreeWidgetItem *newModuleRow(const ModuleForWidget &module, ProbeType type);

/// The signal of a result row. Member rows of a flat result and rows of modules have none; their
/// texts stand for them.
SignalItem signalOfResult(const QTreeWidgetItem *row);

/// The same for rows in the order of their tree. Each name is built and kept in memory once: those
/// of member rows are the ones that the signal of the bus above them has.
class ResultSignals
{
public:
    SignalItem of(const QTreeWidgetItem *row);

private:
    void remember(const QTreeWidgetItem *row, const QList<SignalItem> &members);
    const SignalItem *memberFor(NETWEIR::RtlNet *net);

    const QTreeWidgetItem *m_parent = nullptr; ///< The last row of a bus.
    QList<SignalItem> m_members;               ///< Of its signal.
    std::vector<NETWEIR::RtlNet *> m_nets;     ///< Of the members.
    std::size_t m_next = 0;                    ///< Those before it belong to rows already passed.
};

} // namespace TARN
