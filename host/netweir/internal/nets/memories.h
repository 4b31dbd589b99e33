// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace NETWEIR::Internal {

class ElaboratedDesign;
class InstanceTree;
class PathResolver;
struct Reference;
struct Variable;

/// The unpacked arrays of a design that count as memories because of a computed index.
///
/// Refers to the variables of the parsed definitions, which must outlive it. Memory is linear in
/// the arrays found.
class Memories
{
public:
    /// Adds the array from which @p selected selects an element. The array is @p variable or a part
    /// of it.
    void add(const Variable &variable, const Reference &selected);

    /// @p path leads from @p variable to the array: names of members, joined with '.'; empty for
    /// the variable itself.
    bool contains(const Variable &variable, const std::string &path) const;

private:
    std::unordered_map<const Variable *, std::vector<std::string>> m_paths;
};

/// The memories of which their own definition computes an index. All memories must be known before
/// variables are placed.
Memories findMemories(const ElaboratedDesign &design);

/// Adds the memories of which another node in @p tree computes an index.
void addMemoriesElsewhere(const InstanceTree &tree, const PathResolver &paths, Memories *memories);

/// The path to @p member below @p path.
std::string memberPath(const std::string &path, std::string_view member);

} // namespace NETWEIR::Internal
