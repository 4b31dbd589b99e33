// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "candidaterating.h"
#include "designindex.h"
#include "missingpath.h"
#include "missingtree.h"

#include <QVector>

#include <vector>

namespace TARN {

class DesignNames;

/// What was found for one missing name by itself.
struct NameResult
{
    /// One instance for another.
    struct Move
    {
        int path;     ///< In the tree of missing names.
        int instance; ///< In the index of the design.
    };

    int path = -1;                 ///< Of its instance, in the tree.
    QVector<RatedName> candidates; ///< The best first.
    std::vector<Move> moves;       ///< That put something of the same name in the place.
};

/// Looks for what may have become of one missing name: a similar name in the same instance, the
/// same or a similar name in an instance that may be the same, the same name elsewhere. Looks at no
/// more than about a hundred names. Owns nothing.
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
    /// The search for one name, with its result.
    struct Job
    {
        const MissingPath &missing;
        CandidateRating rating;
        NameResult *result;
        std::vector<int> wide; ///< The instances in which similar names are looked for.
    };

    void searchPlaces(Job *job) const;
    void searchPlace(int instance, bool narrow, Job *job) const;
    bool searchExact(const CandidateRating::Place &place, Job *job) const;
    void addSplitPlaces(int instance, Job *job) const;
    int unpreparedOf(const std::vector<int> &instances) const;
    void rateEntries(Job *job) const;
    void addMove(int instance, Job *job) const;

    const DesignNames &m_names;
    const DesignIndex &m_index;
    MissingTree *m_tree;
};

} // namespace TARN
