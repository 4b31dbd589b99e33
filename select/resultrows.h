// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <model/tarncore.h>

#include <QList>

class QTreeWidgetItem;

namespace NETWEIR {
class RtlNet;
class RtlNetBus;
} // namespace NETWEIR

namespace TARN {

struct ModuleForWidget;

// What a search has found, as signals and rows. A net or bus is enabled unless it is excluded from
// ports of the type.

/// @p net as a single net.
SignalItem signalOf(NETWEIR::RtlNet *net, ProbeType type);
/// @p bus with its members.
SignalItem signalOf(NETWEIR::RtlNetBus *bus, ProbeType type);

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
