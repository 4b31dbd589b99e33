// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <vector>

namespace NETWEIR::Internal {

/// Memory for blocks that live as long as this object.
///
/// It comes in pieces that become larger with the number of blocks. The largest consist of huge
/// pages, if the system has them: 5 million nets would otherwise take 40,000 page faults and, in a
/// thread, as many calls to make a page writable. That takes as long as filling the pages.
class BlockMemory
{
public:
    /// Uninitialized, aligned for any object.
    void *allocate(std::size_t bytes);

private:
    struct Free
    {
        void operator()(void *piece) const { std::free(piece); }
    };

    static constexpr std::size_t FirstPiece = 32 * 1024;
    static constexpr std::size_t LargestPiece = 8 * 1024 * 1024;

    void addPiece(std::size_t bytes);

    std::vector<std::unique_ptr<char, Free>> m_pieces;
    std::size_t m_pieceSize = FirstPiece; ///< Of the next piece.
    char *m_next = nullptr;               ///< In the last piece.
    std::size_t m_left = 0;               ///< The bytes that are free there.
};

} // namespace NETWEIR::Internal
