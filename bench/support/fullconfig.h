// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>

namespace TARN {
class TarnCore;
}

namespace TarnBench {

constexpr int FullConfigCores = 16;
constexpr int FullConfigPorts = 64; ///< Of each kind, in each core.
constexpr int FullConfigBits = 256; ///< In each port.

/// A configuration at all limits: single nets in the Probe In ports, buses in the Probe Out ports.
/// The caller owns the cores.
QList<TARN::TarnCore *> fullConfig();

} // namespace TarnBench
