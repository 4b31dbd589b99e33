// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "symboltable.h"

#include <netweir/internal/ground/itemat.h>

#include <algorithm>
#include <functional>

namespace NETWEIR::Internal {

void SymbolTable::add(std::string_view name, const Symbol &symbol)
{
    if (2 * (m_entries.size() + 1) > m_slots.size())
        grow();
    int &entry = itemAt(m_slots, slotOf(name));
    if (entry >= 0)
        return;
    entry = countOf(m_entries);
    m_entries.emplace_back(name, symbol);
}

Symbol SymbolTable::find(std::string_view name) const
{
    if (m_entries.empty())
        return {};
    const int entry = itemAt(m_slots, slotOf(name));
    return entry < 0 ? Symbol() : itemAt(m_entries, entry).symbol();
}

void SymbolTable::shrink()
{
    m_entries.shrink_to_fit();
}

/// The place of @p name, or the free one where it belongs.
int SymbolTable::slotOf(std::string_view name) const
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t slot = std::hash<std::string_view>()(name) & mask;
    while (m_slots[slot] >= 0 && itemAt(m_entries, m_slots[slot]).name() != name)
        slot = (slot + 1) & mask;
    return int(slot);
}

void SymbolTable::grow()
{
    m_slots.assign(std::max<std::size_t>(4, 2 * m_slots.size()), -1);
    for (int i = 0; i < countOf(m_entries); ++i)
        itemAt(m_slots, slotOf(itemAt(m_entries, i).name())) = i;
}

} // namespace NETWEIR::Internal
