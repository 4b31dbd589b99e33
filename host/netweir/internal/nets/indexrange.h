// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <optional>
#include <string_view>

namespace NETWEIR::Internal {

/// Values that an index expression can take: low, low + step, ... up to high. A step of 0 stands
/// for one single value.
struct IndexRange
{
    qint64 low = 0;
    qint64 high = 0;
    qint64 step = 0;

    bool isSingle() const { return low == high; }

    static IndexRange single(qint64 value) { return {value, value, 0}; }

    /// All values of a vector of @p width bits.
    static IndexRange ofWidth(qint64 width, bool isSigned);
};

/// Values of this size lie far beyond every index, and far from overflow.
constexpr qint64 IndexLimit = qint64(1) << 40;

/// The part of @p range within IndexLimit. Of a range that lies beyond it, nothing is known but the
/// step.
IndexRange bounded(const IndexRange &range);

/// The lowest @p width bits of the values.
IndexRange truncated(const IndexRange &range, qint64 width);

/// What a calculation of @p width bits can give. A single value is left alone: in a loop it lies
/// out of range where the source says so, since the elaborator cuts every index to its vector.
IndexRange wrapped(const IndexRange &range, qint64 width);

/// A range that holds the values of both.
IndexRange united(const IndexRange &a, const IndexRange &b);

IndexRange operator+(const IndexRange &a, const IndexRange &b);

/// Gives the results for all values of both operands; nothing when they are not known.
using IndexCalculation = std::optional<IndexRange> (*)(const IndexRange &a, const IndexRange &b);

/// The calculation that elements of the name @p operation, such as "add", stand for. Null for other
/// elements. The result may exceed IndexLimit, which none of the operands may.
IndexCalculation calculationOf(std::string_view operation);

/// The result of @p comparison, the name of an element such as "lt". Nothing for other elements.
std::optional<bool> compared(std::string_view comparison, qint64 a, qint64 b);

} // namespace NETWEIR::Internal
