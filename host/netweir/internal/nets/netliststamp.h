// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

namespace NETWEIR {
class NetlistBuilder;
} // namespace NETWEIR

namespace NETWEIR::Internal {

class InstanceMarks;
class InstanceTree;
struct PlacedDefinition;

/// Adds the nodes and nets of all instances to a netlist: those of a definition once for each of
/// its instances. @p placed is by number.
void stampNetlist(const InstanceTree &tree, const std::vector<PlacedDefinition> &placed,
                  const InstanceMarks &marks, NetlistBuilder *builder);

} // namespace NETWEIR::Internal
