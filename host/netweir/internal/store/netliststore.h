// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "blockmemory.h"
#include "pathprefix.h"
#include "textpool.h"

#include <netweir/hierachy.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>

#include <deque>
#include <new>
#include <type_traits>
#include <vector>

namespace NETWEIR::Internal {

/// Objects in blocks that never move, so pointers to them stay valid while the arena grows. Objects
/// also have an index. The arena owns them.
template <typename T>
class Arena
{
public:
    /// The blocks come from @p memory, which must outlive this object.
    explicit Arena(BlockMemory *memory)
        : m_memory(memory)
    {
    }
    ~Arena()
    {
        if constexpr (!std::is_trivially_destructible_v<T>) {
            for (std::size_t index = 0; index < m_size; ++index)
                at(index)->~T();
        }
    }
    Arena(const Arena &) = delete;
    Arena &operator=(const Arena &) = delete;

    T *add()
    {
        if (m_next == m_end)
            addBlock();
        ++m_size;
        return new (m_next++) T;
    }

    T *at(std::size_t index) const
    {
        return m_blocks[index >> BlockBits] + (index & (BlockSize - 1));
    }

    std::size_t size() const { return m_size; }

private:
    static constexpr unsigned BlockBits = 8;
    static constexpr std::size_t BlockSize = std::size_t(1) << BlockBits;

    void addBlock()
    {
        m_next = static_cast<T *>(m_memory->allocate(BlockSize * sizeof(T)));
        m_end = m_next + BlockSize;
        m_blocks.push_back(m_next);
    }

    BlockMemory *m_memory;
    std::vector<T *> m_blocks;
    T *m_next = nullptr; ///< In the last block.
    T *m_end = nullptr;  ///< Of the last block.
    std::size_t m_size = 0;
};

} // namespace NETWEIR::Internal

namespace NETWEIR {

// A design may have millions of nets, and deleting a netlist should not visit each.
static_assert(sizeof(RtlNet) <= 3 * sizeof(void *) && std::is_trivially_destructible_v<RtlNet>);

/// Storage of a netlist, filled by NetlistBuilder.
struct Q_DECL_HIDDEN RtlNetlist::Private
{
    Internal::TextPool texts;                  ///< Of the prefixes.
    std::deque<Internal::PathPrefix> prefixes; ///< Of the nodes; nets and buses point to them.
    Internal::BlockMemory memory;              ///< Of the nodes, nets and buses.
    Internal::Arena<Hierachy> nodes{&memory};  ///< The top node is the first.
    Internal::Arena<RtlNet> nets{&memory};
    Internal::Arena<RtlNetBus> buses{&memory};
    std::deque<QString> names; ///< Of the single nets; bits have the name in their bus.
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
