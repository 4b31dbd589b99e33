// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tarncore.h"

namespace NETWEIR {
class RtlNet;
class RtlNetBus;
} // namespace NETWEIR

namespace TARN {

// The nets and buses of a netlist as signals of a port.

/// The net cannot be on a port of the type.
bool isExcluded(NETWEIR::RtlNet *net, ProbeType type);
/// Some bit of the bus cannot be on a port of the type.
bool isExcluded(NETWEIR::RtlNetBus *bus, ProbeType type);

/// @p net as a single net, enabled unless it is excluded.
SignalItem signalOf(NETWEIR::RtlNet *net, ProbeType type);
/// @p bus with its members. It and each of them are enabled unless they are excluded.
SignalItem signalOf(NETWEIR::RtlNetBus *bus, ProbeType type);

} // namespace TARN
