// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <string_view>
#include <unordered_map>

namespace NETWEIR::Internal {

/// What a name means within a scope of a definition.
struct Symbol
{
    enum class Kind { None, Variable, Instance, Scope, Routine };

    Kind kind = Kind::None;
    int index = -1; ///< Among the items of that kind in the definition.
};

/// A naming level of a definition: itself, a generate scope, or a block with variables of its own.
///
/// The names are views into the document, which has to outlive them.
struct NameScope
{
    int parent = -1;
    QString name; ///< What it adds to the names within, as "g[0]."; empty for blocks.
    std::unordered_map<std::string_view, Symbol> symbols;

    /// What this scope alone holds under @p symbolName.
    Symbol find(std::string_view symbolName) const;
};

} // namespace NETWEIR::Internal
