// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace NETWEIR::Internal {

class InstanceTree;
class PathResolver;
struct Definition;
struct Reference;
struct Variable;

/// The unpacked arrays of a design that count as memories because of a computed index.
///
/// Refers to the variables of the parsed definitions, which must outlive it. Memory is linear in
/// the arrays found.
class Memories
{
public:
    /// Adds the arrays of which @p definition, whose elements are in memory, computes an index. All
    /// memories must be known before variables are placed.
    void addOf(const Definition &definition);

    /// Adds the memories of which another node in @p tree computes an index. True when there are
    /// new ones.
    bool addElsewhere(const InstanceTree &tree, const PathResolver &paths);

    /// Adds the array from which @p selected selects an element. The array is @p variable or a part
    /// of it.
    void add(const Variable &variable, const Reference &selected);

    /// @p path leads from @p variable to the array: names of members, joined with '.'; empty for
    /// the variable itself.
    bool contains(const Variable &variable, const std::string &path) const;

private:
    /// An array in another node.
    struct ArrayElsewhere
    {
        int scope = 0;
        std::string path; ///< The names before that of the variable.
        std::string name;
        std::string array; ///< The path from the variable to the array.
    };

    bool add(const Variable &variable, const std::string &path);

    std::unordered_map<const Variable *, std::vector<std::string>> m_paths;
    /// By the definition that computes their index.
    std::unordered_map<const Definition *, std::vector<ArrayElsewhere>> m_elsewhere;
};

/// The path to @p member below @p path.
std::string memberPath(const std::string &path, std::string_view member);

} // namespace NETWEIR::Internal
