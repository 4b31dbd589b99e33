// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "symboltable.h"

#include <QString>

namespace NETWEIR::Internal {

/// A scope of names in a definition: the definition itself, a generate scope, or a block with local
/// variables.
struct NameScope
{
    int parent = -1;
    QString name;       ///< Prefix for the names in it, such as "g[0]."; empty for blocks.
    int identifier = 0; ///< Length of the identifier at the beginning of the prefix.
    SymbolTable symbols;

    /// The symbol @p symbolName of this scope alone.
    Symbol find(std::string_view symbolName) const { return symbols.find(symbolName); }
};

} // namespace NETWEIR::Internal
