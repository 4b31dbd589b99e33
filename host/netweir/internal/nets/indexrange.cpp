// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "indexrange.h"

#include <algorithm>
#include <numeric>
#include <unordered_map>

namespace NETWEIR::Internal {

namespace {

constexpr qint64 WidestIndex = 39; ///< In bits; wider values exceed IndexLimit.
constexpr qint64 LargestFactor = 65536;

std::optional<IndexRange> sum(const IndexRange &a, const IndexRange &b)
{
    return a + b;
}

std::optional<IndexRange> difference(const IndexRange &a, const IndexRange &b)
{
    return IndexRange{a.low - b.high, a.high - b.low, std::gcd(a.step, b.step)};
}

std::optional<IndexRange> product(const IndexRange &a, const IndexRange &b)
{
    const IndexRange &factor = a.isSingle() ? a : b;
    const IndexRange &other = a.isSingle() ? b : a;
    const qint64 by = factor.low;
    if (!factor.isSingle() || by < 0 || by > LargestFactor)
        return std::nullopt;
    return IndexRange{other.low * by, other.high * by, other.step * by};
}

/// The calculations below are known only for non-negative values and one operand with a single
/// value.
bool isKnown(const IndexRange &values, const IndexRange &operand, qint64 least,
             qint64 most = IndexLimit)
{
    return values.low >= 0 && operand.isSingle() && operand.low >= least && operand.low <= most;
}

std::optional<IndexRange> shiftedLeft(const IndexRange &a, const IndexRange &b)
{
    if (!isKnown(a, b, 0, 16))
        return std::nullopt;
    return product(a, IndexRange::single(qint64(1) << b.low));
}

std::optional<IndexRange> shiftedRight(const IndexRange &a, const IndexRange &b)
{
    if (!isKnown(a, b, 0, WidestIndex))
        return std::nullopt;
    return IndexRange{a.low >> b.low, a.high >> b.low, a.isSingle() ? 0 : 1};
}

std::optional<IndexRange> masked(const IndexRange &a, const IndexRange &b)
{
    if (!isKnown(a, b, 0))
        return std::nullopt;
    return a.isSingle() ? IndexRange::single(a.low & b.low)
                        : IndexRange{0, std::min(a.high, b.low), 1};
}

std::optional<IndexRange> quotient(const IndexRange &a, const IndexRange &b)
{
    if (!isKnown(a, b, 1))
        return std::nullopt;
    return IndexRange{a.low / b.low, a.high / b.low, a.isSingle() ? 0 : 1};
}

std::optional<IndexRange> remainder(const IndexRange &a, const IndexRange &b)
{
    if (!isKnown(a, b, 1))
        return std::nullopt;
    return a.isSingle() ? IndexRange::single(a.low % b.low) : IndexRange{0, b.low - 1, 1};
}

} // namespace

IndexRange IndexRange::ofWidth(qint64 width, bool isSigned)
{
    if (width >= WidestIndex)
        return {-IndexLimit, IndexLimit, 1};
    const qint64 count = qint64(1) << width;
    return isSigned ? IndexRange{-count / 2, count / 2 - 1, 1} : IndexRange{0, count - 1, 1};
}

IndexRange bounded(const IndexRange &range)
{
    if (range.low >= -IndexLimit && range.high <= IndexLimit)
        return range;
    const qint64 step = std::max<qint64>(range.step, 1);
    const qint64 lowest = -IndexLimit + ((range.low + IndexLimit) % step + step) % step;
    if (lowest > IndexLimit)
        return {-IndexLimit, IndexLimit, 1};
    const bool isBeyond = range.low > IndexLimit || range.high < -IndexLimit;
    const qint64 low = isBeyond ? lowest : std::max(range.low, lowest);
    const qint64 highest = low + (IndexLimit - low) / step * step;
    return {low, isBeyond ? highest : std::min(range.high, highest), step};
}

IndexRange truncated(const IndexRange &range, qint64 width)
{
    if (width < 1 || width > WidestIndex)
        return range;
    const qint64 modulus = qint64(1) << width;
    if (range.isSingle())
        return IndexRange::single(range.low & (modulus - 1));
    if (range.low >= 0 && range.high < modulus)
        return range;
    const qint64 step = std::gcd(range.step, modulus);
    const qint64 first = range.low & (step - 1);
    return {first, modulus - step + first, step};
}

IndexRange wrapped(const IndexRange &range, qint64 width)
{
    return range.isSingle() ? range : truncated(range, width);
}

IndexRange united(const IndexRange &a, const IndexRange &b)
{
    const qint64 step = std::gcd(std::gcd(a.step, b.step), qAbs(a.low - b.low));
    return {std::min(a.low, b.low), std::max(a.high, b.high), step};
}

IndexRange operator+(const IndexRange &a, const IndexRange &b)
{
    return bounded({a.low + b.low, a.high + b.high, std::gcd(a.step, b.step)});
}

IndexCalculation calculationOf(std::string_view operation)
{
    static const std::unordered_map<std::string_view, IndexCalculation> Calculations = {
        {"add", sum},
        {"and", masked},
        {"div", quotient},
        {"divs", quotient},
        {"moddiv", remainder},
        {"moddivs", remainder},
        {"mul", product},
        {"muls", product},
        {"shiftl", shiftedLeft},
        {"shiftr", shiftedRight},
        {"sub", difference},
    };
    const auto found = Calculations.find(operation);
    return found == Calculations.end() ? nullptr : found->second;
}

std::optional<bool> compared(std::string_view comparison, qint64 a, qint64 b)
{
    if (comparison == "gt" || comparison == "gts")
        return a > b;
    if (comparison == "gte" || comparison == "gtes")
        return a >= b;
    if (comparison == "lt" || comparison == "lts")
        return a < b;
    if (comparison == "lte" || comparison == "ltes")
        return a <= b;
    if (comparison == "eq")
        return a == b;
    if (comparison == "neq")
        return a != b;
    return std::nullopt;
}

} // namespace NETWEIR::Internal
