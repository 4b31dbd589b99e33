// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <string_view>
#include <unordered_map>

namespace NETWEIR::Internal {

/// The meaning of a name in a scope of a definition.
struct Symbol
{
    enum class Kind { None, Variable, Instance, Scope, Routine };

    Kind kind = Kind::None;
    int index = -1; ///< Index among the items of that kind in the definition.
};

/// A scope of names in a definition: the definition itself, a generate scope, or a block with local
/// variables.
///
/// The names belong to the design.
struct NameScope
{
    int parent = -1;
    QString name;       ///< Prefix for the names in it, such as "g[0]."; empty for blocks.
    int identifier = 0; ///< Length of the identifier at the beginning of the prefix.
    std::unordered_map<std::string_view, Symbol> symbols;

    /// The symbol @p symbolName of this scope alone.
    Symbol find(std::string_view symbolName) const;
};

} // namespace NETWEIR::Internal
