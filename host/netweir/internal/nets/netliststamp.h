// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <vector>

namespace NETWEIR {
class Hierachy;
class NetlistBuilder;
} // namespace NETWEIR

namespace NETWEIR::Internal {

class InstanceMarks;
class InstanceTree;
struct PlacedDefinition;

/// Adds the nets of the first instance to @p node, and the nodes and nets of all other instances
/// below it, those of a definition once per instance. @p placed is indexed by the number of the
/// definition. Instead of a node for a foreign instance, calls @p border with the number of the
/// instance and the node of its parent.
void stampNetlist(const InstanceTree &tree, const std::vector<PlacedDefinition> &placed,
                  const InstanceMarks &marks, Hierachy *node, NetlistBuilder *builder,
                  const std::function<void(int instance, Hierachy *parent)> &border = {});

} // namespace NETWEIR::Internal
