// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/ground/readguard.h>

#include <algorithm>

namespace NETWEIR::Internal {

/// Bits of a definition: the ranges [low, low + width), [low + step, low + step + width), ... up to
/// [high, high + width), cut off at end.
struct BitRange
{
    qint64 low = 0;
    qint64 high = -1;
    qint64 step = 1;
    qint64 width = 0;
    qint64 end = 0;
};

/// Calls @p visit once for every bit of @p range, in rising order.
template <typename Visit>
void forEachBit(BitRange range, const Visit &visit)
{
    const bool isWhole = range.step <= range.width;
    if (isWhole) {
        range.width += range.high - range.low;
        range.high = range.low;
    }
    for (; range.low <= range.high; range.low += range.step) {
        ReadGuard::check();
        for (qint64 bit = range.low; bit < std::min(range.low + range.width, range.end); ++bit)
            visit(bit);
    }
}

} // namespace NETWEIR::Internal
