// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

namespace NETWEIR::Internal {

/// Memory for blocks that live as long as this object.
///
/// It comes in pieces that become larger with the number of blocks. With an allocation for each
/// block, 5 million nets would take 20,000 system calls, because the heap of a thread grows page by
/// page.
class BlockMemory
{
public:
    /// Uninitialized, aligned for any object.
    void *allocate(std::size_t bytes)
    {
        constexpr std::size_t Unit = alignof(std::max_align_t);
        bytes = (bytes + Unit - 1) / Unit * Unit;
        if (bytes > m_left)
            addPiece(std::max(bytes, m_pieceSize));
        void *block = m_next;
        m_next += bytes;
        m_left -= bytes;
        return block;
    }

private:
    static constexpr std::size_t FirstPiece = 32 * 1024;
    static constexpr std::size_t LargestPiece = 1024 * 1024;

    void addPiece(std::size_t size)
    {
        m_pieces.emplace_back(new char[size]);
        m_next = m_pieces.back().get();
        m_left = size;
        m_pieceSize = std::min(2 * m_pieceSize, LargestPiece);
    }

    std::vector<std::unique_ptr<char[]>> m_pieces;
    std::size_t m_pieceSize = FirstPiece; ///< Of the next piece.
    char *m_next = nullptr;               ///< In the last piece.
    std::size_t m_left = 0;               ///< The bytes that are free there.
};

} // namespace NETWEIR::Internal
