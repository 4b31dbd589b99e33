// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace NETWEIR {
class RtlNetlist;
}

// Each job measures one part of choosing signals, checks the results against a reference, prints a
// table and returns false when a goal is missed.

bool measureSearching(NETWEIR::RtlNetlist *netlist);

/// Must be the first job, before the process has used any memory.
bool measureShowing(NETWEIR::RtlNetlist *netlist);

bool measureMerging();

bool measureRemoving();

/// Lists at their limits.
bool measureLimits(NETWEIR::RtlNetlist *netlist);
