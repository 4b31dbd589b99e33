// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVector>

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

/// An error for which a save is refused.
struct ConfigError
{
    enum Kind {
        EmptyCore, ///< No port of the core holds a signal.
        UserClock,
        SeveralDrivers,
    };

    Kind kind = EmptyCore;
    int core = -1; ///< Position of the core; -1 for a bit with several drivers.
    QString name;  ///< Full name of the bit with several drivers; empty for the others.
    QString text;  ///< As the user reads it.
};

/// The errors in the configuration of @p cores: first the errors of each core, core by core, then
/// the bits with several drivers, sorted by name. Clocks are looked up in @p netlist, which may be
/// null; then no clock is found. Costs n log n in the driven bits.
QVector<ConfigError> configErrors(const QList<TarnCore *> &cores, NETWEIR::RtlNetlist *netlist);

/// The texts of configErrors().
QStringList checkConfig(const QList<TarnCore *> &cores, NETWEIR::RtlNetlist *netlist);

} // namespace TARN
