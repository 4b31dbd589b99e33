// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pathprefix.h"
#include "textpool.h"

#include <netweir/hierachy.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>

#include <deque>
#include <memory>
#include <vector>

namespace NETWEIR::Internal {

/// Objects in blocks that never move, so pointers to them stay valid while the arena grows. Objects
/// also have an index. The arena owns them and destroys them block by block.
template <typename T>
class Arena
{
public:
    T *add()
    {
        if (m_size == m_blocks.size() << BlockBits)
            m_blocks.emplace_back(new T[BlockSize]);
        const std::size_t index = m_size++;
        return at(index);
    }

    T *at(std::size_t index) const
    {
        return &m_blocks[index >> BlockBits][index & (BlockSize - 1)];
    }

    std::size_t size() const { return m_size; }

private:
    static constexpr unsigned BlockBits = 8;
    static constexpr std::size_t BlockSize = std::size_t(1) << BlockBits;

    std::vector<std::unique_ptr<T[]>> m_blocks;
    std::size_t m_size = 0;
};

} // namespace NETWEIR::Internal

namespace NETWEIR {

// A design may have millions of nets.
static_assert(sizeof(RtlNet) <= 3 * sizeof(void *));

/// Storage of a netlist, filled by NetlistBuilder.
struct Q_DECL_HIDDEN RtlNetlist::Private
{
    Internal::TextPool texts;                  ///< Of the prefixes.
    std::deque<Internal::PathPrefix> prefixes; ///< Of the nodes; nets and buses point to them.
    Internal::Arena<Hierachy> nodes;           ///< The top node is the first.
    Internal::Arena<RtlNet> nets;
    Internal::Arena<RtlNetBus> buses;
    bool usesJtagPrimitive = false;

    /// The lengths of the identifiers of names. The first list is empty and stands for the names
    /// that need none.
    std::vector<std::vector<int>> nameShapes{{}};

    /// Hash table with open addressing and linear probing, at most half full. An entry has the
    /// index in nets plus one in its lowest slotBits bits, 0 for a free slot. The bits above are
    /// those of the name's hash, so that hardly any other name is compared. Filled by the first
    /// search, because many netlists are never searched by name.
    std::vector<quint32> slots;
    unsigned slotBits = 0;

    void indexNets();
};

} // namespace NETWEIR
