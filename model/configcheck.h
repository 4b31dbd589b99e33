// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QStringList>

namespace NETWEIR {
class RtlNetlist;
}

namespace TARN {

class TarnCore;

/// The errors in the configuration of @p cores, one message per error: first the errors of each
/// core, core by core, then the bits with several drivers, sorted by name. Clocks are looked up in
/// @p netlist, which may be null; then no clock is found. Costs n log n in the driven bits.
QStringList checkConfig(const QList<TarnCore *> &cores, NETWEIR::RtlNetlist *netlist);

} // namespace TARN
