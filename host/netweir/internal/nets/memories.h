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

/// The unpacked arrays of a design that are memories because a computed index reaches them.
///
/// Refers to the variables of the parsed definitions, which have to outlive it. Memory is linear in
/// the arrays found.
class Memories
{
public:
    /// Remembers that the array that @p selected selects an element of is a memory. It is
    /// @p variable or lies within.
    void add(const Variable &variable, const Reference &selected);

    /// @p path is how the array is reached from @p variable: names of members, joined with '.';
    /// empty for the variable itself.
    bool contains(const Variable &variable, const std::string &path) const;

private:
    std::unordered_map<const Variable *, std::vector<std::string>> m_paths;
};

/// Memories have to be known before variables get their bits.
Memories findMemories(const ElaboratedDesign &design, const InstanceTree &tree,
                      const PathResolver &paths);

/// The path of @p member of what @p path leads to.
std::string memberPath(const std::string &path, std::string_view member);

} // namespace NETWEIR::Internal
