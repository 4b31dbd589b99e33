// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <model/netsignals.h>

#include <QList>

class QTreeWidgetItem;

namespace TARN {

struct ModuleForWidget;

// What a search has found, as rows. They refer to the nets and buses, so the netlist must not go
// while they are shown; they may be deleted later. Clones have values of their own.

/// Rows, owned by the caller, for @p buses and then for @p nets, with full names.
QList<QTreeWidgetItem *> newResultRows(const QList<NETWEIR::RtlNet *> &nets,
                                       const QList<NETWEIR::RtlNetBus *> &buses, ProbeType type);

/// A row, owned by the caller, for @p module, which cannot be chosen, with rows for its own buses
/// and nets under their short names. Sub-modules get none.
QTreeWidgetItem *newModuleRow(const ModuleForWidget &module, ProbeType type);

/// The signal of a result row. Member rows of a flat result and rows of modules have none; their
/// texts stand for them.
SignalItem signalOfResult(const QTreeWidgetItem *row);

} // namespace TARN
