// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <model/tarncore.h>

#include <QString>
#include <QVector>

namespace TARN {

/// What can be wrong with a configuration. A user clock or a signal has at most one of the first
/// three, the worst; a bus that has changed may also be not usable.
enum class Rule {
    NetMissing,     ///< The net or bus is not in the design.
    BusChanged,     ///< The design has that bus with another range or other bits.
    NotUsable,      ///< The net, or a bit of the bus, is excluded from ports of that kind.
    ClockMissing,   ///< The user clock is wanted but not given, or not in the design.
    ClockNotUsable, ///< The user clock cannot be read.
    SeveralDrivers, ///< A bit is driven more than once, by one port or by several.
    Repeated,       ///< One port holds a bit more than once.
    ValueWidth,     ///< The initial value needs more bits than the port has.
    EmptyCore,      ///< No port of the core holds a signal.
    EmptyPort,      ///< The port holds no signal.
};

enum class Severity {
    Note,    ///< An unfinished configuration, as every new one is.
    Warning, ///< Can be saved, but is probably not what is wanted.
    Error,   ///< Cannot be saved or inserted.
};

/// "net-missing", "bus-changed", ...: the name of the rule for tools.
QString ruleId(Rule rule);

Severity severityOf(Rule rule);

/// A place in a configuration. All numbers are positions in lists, from 0; -1 means the whole.
struct Place
{
    int core = -1;
    ProbeType type = ProbeTypeIn; ///< Kind of the port; no meaning when port is -1.
    int port = -1;                ///< -1: the core, or its user clock.
    int signal = -1;
    int bit = -1; ///< Position in the members of a bus; -1 for a single net.
};

inline bool operator==(const Place &a, const Place &b)
{
    return a.core == b.core && a.type == b.type && a.port == b.port && a.signal == b.signal &&
           a.bit == b.bit;
}

inline bool operator!=(const Place &a, const Place &b)
{
    return !(a == b);
}

/// One thing that is wrong, for the user.
struct Finding
{
    Rule rule = Rule::NetMissing;
    /// Where it is. For a bus of which some bits are not usable, the first of them.
    Place place;
    /// Of bits that occur more than once: every further place, in order.
    QVector<Place> others;
    /// Full name of the net or bus as the configuration has it; empty for values, ports and cores.
    QString name;
    /// One sentence, translated, without the place.
    QString text;
};

} // namespace TARN
