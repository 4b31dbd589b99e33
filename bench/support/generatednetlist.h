// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

namespace NETWEIR {
class RtlNetlist;
}

namespace TarnBench {

/// A netlist of a million bits under names of the length that designs have: 20,000 nodes below the
/// top, each 49 blocks in a group, with 250,000 single nets and 25,000 buses of 30 bits. Some are
/// excluded from either kind of probe.
std::unique_ptr<NETWEIR::RtlNetlist> generatedNetlist();

} // namespace TarnBench
