// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "missingpath.h"

#include "designnames.h"

#include <algorithm>
#include <cmath>

namespace TARN {

namespace {

constexpr float OneLevelMore = 0.5F;
constexpr float OneLevelLess = 0.45F;

/// The position of the index at the end of a name, or the length of the name.
qsizetype indexPosition(QStringView leaf)
{
    if (leaf.isEmpty())
        return 0;
    const bool square = leaf.back() == QLatin1Char(']');
    if (!square && leaf.back() != QLatin1Char(')'))
        return leaf.size();
    qsizetype at = leaf.size() - 1;
    while (at > 0 && leaf[at - 1] >= QLatin1Char('0') && leaf[at - 1] <= QLatin1Char('9'))
        --at;
    const bool isIndex =
        at > 1 && at < leaf.size() - 1 && leaf[at - 1] == QLatin1Char(square ? '[' : '(');
    return isIndex ? at - 1 : leaf.size();
}

/// The levels in which two paths differ: from front to back, without the common levels around.
struct Difference
{
    Difference(const std::vector<QStringView> &left, const std::vector<QStringView> &right)
    {
        const std::size_t common = std::min(left.size(), right.size());
        while (front < common && left[front] == right[front])
            ++front;
        while (back < common - front &&
               left[left.size() - 1 - back] == right[right.size() - 1 - back])
            ++back;
        leftCount = left.size() - front - back;
        rightCount = right.size() - front - back;
    }

    std::size_t front = 0; ///< Common levels.
    std::size_t back = 0;
    std::size_t leftCount;
    std::size_t rightCount;
};

NameTokens tokensOf(const std::vector<QStringView> &levels, std::size_t first, std::size_t count)
{
    NameTokens tokens;
    for (std::size_t i = first; i < first + count; ++i)
        tokens.add(levels[i]);
    return tokens;
}

} // namespace

std::vector<QStringView> levelsOf(QStringView path)
{
    std::vector<QStringView> levels;
    for (;;) {
        const auto slash = std::find(path.begin(), path.end(), QLatin1Char('/')) - path.begin();
        levels.push_back(path.left(slash));
        if (slash == path.size())
            return levels;
        path = path.mid(slash + 1);
    }
}

MissingPath::MissingPath(const MissingName &missing)
    : name(missing.name)
    , bus(missing.bus)
    , type(missing.type)
{
    levels = levelsOf(name);
    leaf = levels.back();
    levels.pop_back();
    base = bus ? baseOfBusName(leaf) : leaf;
    if (!bus) {
        const qsizetype position = indexPosition(leaf);
        base = leaf.left(position);
        index = leaf.mid(position);
    }
    tokens.add(base);
    allTokens = tokens;
    allTokens.add(index);
}

float pathLikeness(const std::vector<QStringView> &left, const std::vector<QStringView> &right)
{
    if (left.size() > MaximumLevels || right.size() > MaximumLevels)
        return 0;
    const Difference difference(left, right);
    if (difference.leftCount == 0 && difference.rightCount == 0)
        return 1;
    float alike = 0;
    if (difference.leftCount == 0)
        alike = std::pow(OneLevelMore, float(difference.rightCount));
    else if (difference.rightCount == 0)
        alike = std::pow(OneLevelLess, float(difference.leftCount));
    else
        // Names that have the same words are not the same.
        alike = 0.97F * likeness(tokensOf(left, difference.front, difference.leftCount),
                                 tokensOf(right, difference.front, difference.rightCount));
    // What is common below says that the instance was moved.
    const float weight = difference.back == 0 ? 1.0F : difference.back == 1 ? 0.6F : 0.45F;
    return 1 - (1 - alike) * weight;
}

float joinedLikeness(const MissingPath &missing, const std::vector<QStringView> &levels,
                     QStringView base)
{
    if (missing.levels.size() > MaximumLevels || levels.size() > MaximumLevels)
        return 0;
    const Difference difference(missing.levels, levels);
    if (difference.back > 0 || difference.leftCount == difference.rightCount)
        return 0;
    NameTokens left = tokensOf(missing.levels, difference.front, difference.leftCount);
    left.add(missing.base);
    left.add(missing.index);
    NameTokens right = tokensOf(levels, difference.front, difference.rightCount);
    right.add(base);
    // The last part of either name has to be in the other one.
    constexpr float LeastInCommon = 0.3F;
    if (likeness(left, NameTokens(base)) < LeastInCommon ||
        likeness(missing.allTokens, right) < LeastInCommon)
        return 0;
    return likeness(left, right);
}

} // namespace TARN
