// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "blockmemory.h"

#include <algorithm>
#include <new>
#include <sys/mman.h>

namespace NETWEIR::Internal {

namespace {

constexpr std::size_t HugePage = 2 * 1024 * 1024;

std::size_t roundedUp(std::size_t size, std::size_t unit)
{
    return (size + unit - 1) / unit * unit;
}

} // namespace

void *BlockMemory::allocate(std::size_t bytes)
{
    bytes = roundedUp(bytes, alignof(std::max_align_t));
    if (bytes > m_left)
        addPiece(bytes);
    void *block = m_next;
    m_next += bytes;
    m_left -= bytes;
    return block;
}

/// Only a design that fills several huge pages gets any, because half of the last one stays free on
/// average.
void BlockMemory::addPiece(std::size_t bytes)
{
    const bool isLarge = m_pieceSize == LargestPiece;
    const std::size_t unit = isLarge ? HugePage : alignof(std::max_align_t);
    const std::size_t size = roundedUp(std::max(bytes, m_pieceSize), unit);
    std::unique_ptr<char, Free> piece(static_cast<char *>(std::aligned_alloc(unit, size)));
    if (!piece)
        throw std::bad_alloc();
    if (isLarge)
        ::madvise(piece.get(), size, MADV_HUGEPAGE); // Without any it is slower, but no error.
    m_next = piece.get();
    m_left = size;
    m_pieceSize = std::min(2 * m_pieceSize, LargestPiece);
    m_pieces.push_back(std::move(piece));
}

} // namespace NETWEIR::Internal
