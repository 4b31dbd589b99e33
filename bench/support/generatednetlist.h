// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

namespace NETWEIR {
class RtlNetlist;
}

namespace TarnBench {

/// A netlist of a million bits with names of realistic length: 20,000 nodes below the top, in
/// groups of 49 blocks, with 250,000 single nets and 25,000 buses of 30 bits. Some are excluded
/// from either kind of probe.
///
/// The full paths have 57 letters on average. A larger @p lettersOfPath makes the names of the
/// instances longer, evenly for groups and blocks, until the average is that number; nothing else
/// changes.
std::unique_ptr<NETWEIR::RtlNetlist> generatedNetlist(int lettersOfPath = 0);

} // namespace TarnBench
