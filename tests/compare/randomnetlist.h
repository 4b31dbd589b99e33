// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

namespace NETWEIR {
class RtlNetlist;
}

namespace TarnCompare {

class Choice;

/// A netlist of up to some thousand nets with everything that a builder accepts: names of any
/// characters and none, names that occur twice, ranges in both directions and far from 0, all
/// marks.
std::unique_ptr<NETWEIR::RtlNetlist> randomNetlist(Choice *choice);

} // namespace TarnCompare
