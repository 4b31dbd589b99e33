// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <optional>
#include <string_view>

namespace NETWEIR::Internal {

/// The possible values of an index expression: low, low + step, ... up to high. With a step of 0
/// there is one value.
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

/// Far larger than every index and far from an overflow.
constexpr qint64 IndexLimit = qint64(1) << 40;

/// The part of @p range within IndexLimit. For a range outside of it only the step is known.
IndexRange bounded(const IndexRange &range);

/// The lowest @p width bits of the values.
IndexRange truncated(const IndexRange &range, qint64 width);

/// The possible results of a calculation with @p width bits. Keeps a single value: in a loop it is
/// out of range only if the source says so, because the elaborator cuts every index to the width of
/// its vector.
IndexRange wrapped(const IndexRange &range, qint64 width);

/// A range that contains the values of both.
IndexRange united(const IndexRange &a, const IndexRange &b);

IndexRange operator+(const IndexRange &a, const IndexRange &b);

/// Calculates the results for all values of both operands; nothing when they are not known.
using IndexCalculation = std::optional<IndexRange> (*)(const IndexRange &a, const IndexRange &b);

/// The calculation for elements with the name @p operation, such as "add"; null for other elements.
/// The result may exceed IndexLimit, the operands may not.
IndexCalculation calculationOf(std::string_view operation);

/// The result of @p comparison, the name of an element such as "lt". Nothing for other elements.
std::optional<bool> compared(std::string_view comparison, qint64 a, qint64 b);

} // namespace NETWEIR::Internal
