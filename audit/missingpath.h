// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "candidates.h"
#include "namelikeness.h"

#include <vector>

namespace TARN {

/// Deeper paths are not compared, so that a comparison takes constant time.
constexpr std::size_t MaximumLevels = 64;

/// What stands between the slashes of @p path; at least one part. The views point into it.
std::vector<QStringView> levelsOf(QStringView path);

/// The parts of the name of something missing. Whatever the name is, they are what stands between
/// its slashes; a name with an escaped slash just finds less.
struct MissingPath
{
    explicit MissingPath(const MissingName &missing);

    QString name; ///< The views point into it.
    bool bus;
    ProbeType type;
    std::vector<QStringView> levels; ///< The instances, the top first.
    QStringView leaf;                ///< The last part.
    QStringView base;                ///< The leaf without range and index.
    QStringView index;               ///< "[3]" of a bit, empty for all others.
    NameTokens tokens;               ///< Of the base.
    NameTokens allTokens;            ///< Of base and index.

    /// Too deep to be compared with anything.
    bool isTooDeep() const { return levels.size() > MaximumLevels; }

    /// "[7:0]" of a bus.
    QStringView range() const { return leaf.mid(base.size()); }
};

/// How alike the ways to two instances are, from 0 to 1 for the same. An instance that is moved as
/// it is stays more alike than one that is renamed beyond recognition. Paths that are very deep are
/// unlike.
float pathLikeness(const std::vector<QStringView> &left, const std::vector<QStringView> &right);

/// How alike two names are when the words of the last instances count as words of the name:
/// "alu/result" and "alu_result". Only the instances count in which the paths differ. 0 when both
/// have as many of them.
float joinedLikeness(const MissingPath &missing, const std::vector<QStringView> &levels,
                     QStringView base);

} // namespace TARN
