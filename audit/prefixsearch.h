// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "namesearch.h"

#include <unordered_map>
#include <vector>

namespace TARN {

/// Finds the prefix changes that explain several missing names at once, from the moves that were
/// found for each. Works in slices. Each move is tried with all missing names below it; of one path
/// only a few moves are tried, so that all takes time in proportion to the levels of the names.
class PrefixSearch
{
public:
    struct Name
    {
        const MissingName *missing;
        const NameResult *result;
        int count; ///< How many entries have it.
    };
    struct Change
    {
        QString from;
        QString to;
        float likeness = 0;
        int explains = 0;
        bool stays = false;     ///< The design still has the instance, and the other is elsewhere.
        std::vector<int> names; ///< Positions of what it explains.
    };

    PrefixSearch(const DesignNames &names, const DesignIndex &index, MissingTree *tree,
                 std::vector<Name> missing);

    /// Does a small part of the work. True when there is nothing left to do.
    bool advance();

    const Change &changeAt(int i) const { return m_changes[std::size_t(i)]; }
    /// The positions of the changes that are the best for some name, those that explain most first.
    const std::vector<int> &bestChanges() const { return m_best; }
    /// The positions of the changes that explain the name at that position, the best first.
    const std::vector<int> &changesOf(int position) const
    {
        return m_changesOfNames[std::size_t(position)];
    }

private:
    /// What may have moved from one path.
    struct Source
    {
        std::unordered_map<int, int> votes; ///< By instance.
        std::vector<int> names;             ///< All that are missing below.
        std::vector<int> targets;           ///< The instances to be tried.
    };

    void collectMoves();
    void collectNames();
    void chooseTargets(int path, Source *source) const;
    void addSiblings(int path, Source *source) const;
    void tryNext();
    void tryName(int position);
    void finishTrial();
    void judge();
    bool isInDesign(const QString &path) const;
    void nameMovedInstance();
    bool hasStayed(int position) const;
    bool hasBetter(int position, const Change &change) const;
    void orderChanges();
    void assignNext();

    const DesignNames &m_names;
    const DesignIndex &m_index;
    MissingTree *m_tree;
    std::vector<Name> m_missing;

    enum class Stage { Moves, Names, Tries, Order, Assignment, Done };
    Stage m_stage = Stage::Moves;
    std::size_t m_next = 0;                    ///< Position in what the stage works on.
    std::unordered_map<int, Source> m_sources; ///< By path.
    std::vector<int> m_order;                  ///< The paths in their order.

    // Of the source that is being tried.
    std::size_t m_target = 0;
    std::size_t m_nextName = 0;
    Change m_trial;
    std::vector<Change> m_trials;

    std::vector<Change> m_changes;
    std::vector<int> m_best;
    std::vector<std::vector<int>> m_changesOfNames;
};

} // namespace TARN
