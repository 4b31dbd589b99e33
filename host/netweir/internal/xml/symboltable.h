// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <string_view>
#include <vector>

namespace NETWEIR::Internal {

/// The meaning of a name in a scope of a definition.
struct Symbol
{
    enum class Kind { None, Variable, Instance, Scope, Routine };

    Kind kind = Kind::None;
    int index = -1; ///< Index among the items of that kind in the definition.
};

/// The names of a scope and their meanings.
///
/// The names belong to the design. Large designs have a table for each of many small scopes, so it
/// takes less memory than a container of nodes: about 28 bytes for a name.
class SymbolTable
{
public:
    /// The first meaning of a name counts.
    void add(std::string_view name, const Symbol &symbol);
    /// The meaning of @p name, if it has one.
    Symbol find(std::string_view name) const;
    /// Gives back the memory for names that might come.
    void shrink();

private:
    struct Entry
    {
        Entry(std::string_view text, const Symbol &symbol)
            : letters(text.data())
            , size(quint32(text.size()))
            , kind(quint32(symbol.kind))
            , index(quint32(symbol.index))
        {
        }
        std::string_view name() const { return {letters, size}; }
        Symbol symbol() const { return {Symbol::Kind(kind), int(index)}; }

        const char *letters;
        quint32 size;
        quint32 kind : 3;
        quint32 index : 29;
    };

    int slotOf(std::string_view name) const;
    void grow();

    std::vector<Entry> m_entries; ///< In the order in which they came.
    /// Numbers of the entries by the hash of their names; negative for none. There are at least
    /// twice as many places as entries, a power of two: each place in use costs two look-ups in
    /// memory.
    std::vector<int> m_slots;
};

} // namespace NETWEIR::Internal
