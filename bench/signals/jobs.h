// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace NETWEIR {
class RtlNetlist;
}

// Each job measures one side of picking signals, compares its results with those of the other
// side, prints a table and returns false when a goal is missed.

bool measureSearching(NETWEIR::RtlNetlist *netlist);

/// To be called before any other job, while the memory of the process has never been used.
bool measureShowing(NETWEIR::RtlNetlist *netlist);

bool measureMerging();

bool measureRemoving();
