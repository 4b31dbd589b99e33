// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "designindex.h"
#include "missingpath.h"
#include "missingtree.h"

#include <QVector>

#include <deque>
#include <vector>

namespace TARN {

class DesignNames;

/// What was found for one missing name by itself.
struct NameResult
{
    struct Candidate
    {
        QString name;
        bool bus = false;
        float likeness = 0;
        bool sameInstance = false;
    };
    /// One instance of a path for another.
    struct Move
    {
        int path;     ///< In the tree.
        int instance; ///< In the index.
    };

    QVector<Candidate> candidates; ///< The best first.
    std::vector<Move> moves;       ///< That put something of the same name in the place.
};

/// The order of candidates.
bool isMoreAlike(const NameResult::Candidate &a, const NameResult::Candidate &b);

/// Looks for what may have become of one missing name: a similar name in the same instance, the
/// same or a similar name in an instance that may be the same, the same name elsewhere. Looks at a
/// few dozens of names. Owns nothing.
class NameSearch
{
public:
    NameSearch(const DesignNames &names, const DesignIndex &index, MissingTree *tree)
        : m_names(names)
        , m_index(index)
        , m_tree(tree)
    {
    }

    /// Returns the instance that has to be prepared before the search is repeated; -1 when @p
    /// result is complete.
    int search(const MissingPath &missing, NameResult *result);

private:
    struct Place
    {
        int instance;
        float likeness;
        std::vector<QStringView> levels;
    };

    int collectPlaces(const MissingPath &missing, int path, std::vector<int> *places) const;
    void addSplitPlaces(const MissingPath &missing, int instance, std::vector<int> *places) const;
    void collectEntries(const MissingPath &missing, const std::vector<int> &places);
    const Place &placeOf(const MissingPath &missing, int instance);
    void rate(const MissingPath &missing, int entry, NameResult *result);
    float rated(const MissingPath &missing, const Place &place, QStringView base, float leaf) const;
    void rateNet(const MissingPath &missing, const Place &place, int entry, NameResult *result);
    void rateBus(const MissingPath &missing, const Place &place, int entry, NameResult *result);
    void rateBit(const MissingPath &missing, const Place &place, int entry, QStringView index,
                 float likeness, NameResult *result) const;
    void addMove(int path, int instance, NameResult *result) const;

    const DesignNames &m_names;
    const DesignIndex &m_index;
    MissingTree *m_tree;

    // Of the current search.
    std::vector<int> m_entries;
    std::deque<Place> m_places; ///< Never moved while it grows.
    float m_rarity = 0;         ///< How much it says that something elsewhere has the name.
    bool m_stays = false;       ///< The instance is still in the design.
};

} // namespace TARN
