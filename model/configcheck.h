// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace NETWEIR {
class RtlNetlist;
}

namespace TARN {

class TarnCore;

/// What is wrong with the user clock of a core.
enum class ClockFault {
    None,
    NotGiven,
    Missing,   ///< No such net, or no netlist.
    NotUsable, ///< The net cannot be read.
};

/// @p netlist may be null. Without @p syncUserClock nothing is wrong.
ClockFault clockFault(bool syncUserClock, const QString &userClock, NETWEIR::RtlNetlist *netlist);

/// The fault as the user reads it, without the core. Empty for None.
QString clockFaultText(ClockFault fault);

/// The errors in the configuration of @p cores, one message per error: first the errors of each
/// core, core by core, then the bits with several drivers, sorted by name. Clocks are looked up in
/// @p netlist, which may be null; then no clock is found. Costs n log n in the driven bits.
QStringList checkConfig(const QList<TarnCore *> &cores, NETWEIR::RtlNetlist *netlist);

} // namespace TARN
