// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "finding.h"

#include <QString>

#include <optional>

namespace TARN {

class DesignNames;
struct ConfigSnapshot;

// Putting something else in the place of what is missing or has changed. All functions share what
// does not change with the former snapshot, and take time in proportion to the signals of the ports
// that change.
//
// A bit of the new signal keeps the initial value of the bit with the same name, else of the bit
// with the same index; what remains is 0. A net that takes the place of a net keeps its bit. The
// bits of other signals stay as they are.
//
// The port does not get a bit twice: as in the port dialog, a new bus takes over the nets, and the
// smaller buses, that are among its bits, and keeps their values. When the other signals hold every
// bit of the new one, the old one just goes. Only a bus that has some of the bits, and others,
// stays beside the new signal.

/// Puts @p by, without the members that are not enabled, in the place of the signal at @p place; a
/// bit stands for its bus. Where the port is -1, its name becomes the core's user clock. False, and
/// nothing changes, when the port would exceed MaxPortSignals bits, when @p by is a bus without
/// enabled members, or when there is no such place.
bool replaceSignal(ConfigSnapshot *snapshot, const Place &place, const SignalItem &by);

/// Replaces everything missing below the instance @p from, and each user clock in use, by what has
/// the same name below @p to, as far as the design has it and ports of that kind can hold it.
/// Returns the number of signals and clocks replaced; -1, and nothing changes, when a port would
/// exceed MaxPortSignals bits.
int replacePrefix(ConfigSnapshot *snapshot, const QString &from, const QString &to,
                  const DesignNames &names);

/// The bus that the design has under that full name, without the bits that ports of the type cannot
/// hold, or the net. Nothing when there is none or nothing of it is usable.
std::optional<SignalItem> usableSignal(const QString &name, ProbeType type,
                                       const DesignNames &names);

/// Puts the net or bus that the design has under the name @p to in the place of every signal named
/// @p from, and a net also in the place of each such user clock in use; where only some bits of a
/// bus are usable, these. Ports of a kind that can hold nothing of it stay as they are. Returns
/// like replacePrefix().
int replaceName(ConfigSnapshot *snapshot, const QString &from, const QString &to,
                const DesignNames &names);

/// The usable bits of the bus that the design has under the name @p name, if need be with another
/// range. Nothing when ports of the type can hold none of them.
std::optional<SignalItem> busInPlaceOf(const QString &name, ProbeType type,
                                       const DesignNames &names);

/// Replaces each bus that has changed by busInPlaceOf(). Returns like replacePrefix().
int takeOverBuses(ConfigSnapshot *snapshot, const DesignNames &names);

} // namespace TARN
