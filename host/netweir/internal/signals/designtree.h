// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <string>
#include <string_view>
#include <vector>

namespace NETWEIR::Internal {

/// A scope in the tree of a design. Names are in lower case or extended identifiers.
struct TreeScope
{
    std::string name;   ///< With the index of a for generate: "g(0)", "u1"; the top: its entity.
    std::string entity; ///< Of a bound instance.
    std::string architecture; ///< The same.
    int parent = -1;          ///< Negative for the top.
    bool isRound = false;     ///< Of a for generate.
};

/// The scopes of a design as GHDL shows them with "--disp-tree=port", line by line.
///
/// Lists the instances, blocks and generate statements that the design has, in the order of the
/// source, each before those within it. The wave file has the same scopes in the same order, but
/// not a for generate without rounds, which GHDL shows here as one round with an index by chance.
/// Takes memory by the scopes.
class DesignTree
{
public:
    /// The tree begins with the entity @p top. Functions may report anything in front of it.
    explicit DesignTree(const std::string &top)
        : m_top(top)
    {
    }

    /// Takes the next line of the output. False when it does not belong to the tree: it is in front
    /// of the tree, as long as there are no scopes, or behind it.
    bool addLine(std::string_view line);

    /// The top first; empty when there is no tree.
    const std::vector<TreeScope> &scopes() const { return m_scopes; }

private:
    void addScope(int level, std::string_view name, bool isRound);
    TreeScope *scopeAt(int level);

    const std::string m_top;
    std::vector<TreeScope> m_scopes;
    std::vector<int> m_open; ///< By level, the scope to which the last line belongs; -1 for none.
};

} // namespace NETWEIR::Internal
