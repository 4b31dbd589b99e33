// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "namesearch.h"

#include "designnames.h"

#include <sdk/netweir.h>

#include <algorithm>

namespace TARN {

namespace {

constexpr int MostCandidates = 8;
constexpr std::size_t MostMoves = 32;
constexpr std::size_t MostGuesses = 3; ///< Of the instances that may be the one of the name.

} // namespace

int NameSearch::search(const MissingPath &missing, NameResult *result)
{
    if (missing.isTooDeep())
        return -1;
    const int path = result->path = m_tree->add(missing);
    if (path != -1) {
        const int unprepared = m_tree->guess(path);
        if (unprepared != -1)
            return unprepared;
    }
    const bool stays = path != -1 && m_tree->instanceOf(path) != -1;
    Job job{missing, CandidateRating(m_names, m_index, missing, stays), result, {}};
    if (path != -1)
        searchPlaces(&job);
    const int unprepared = unpreparedOf(job.wide);
    if (unprepared != -1) {
        *result = NameResult();
        return unprepared;
    }
    rateEntries(&job);
    result->candidates = job.rating.best(MostCandidates);
    return -1;
}

/// Finds the instances that may be the one of the name, those around, and those that have its name.
void NameSearch::searchPlaces(Job *job) const
{
    const std::vector<MissingTree::Guess> &guesses = m_tree->guessesOf(job->result->path);
    for (std::size_t i = 0; i < std::min(MostGuesses, guesses.size()); ++i)
        searchPlace(guesses[i].instance, true, job);
    const int exact = m_tree->instanceOf(job->result->path);
    if (exact == -1) {
        std::vector<int> moved;
        m_index.findInstancesByEnd(job->missing.levels, &moved);
        if (moved.size() <= MostGuesses) {
            for (const int instance : moved)
                searchPlace(instance, true, job);
        }
    } else if (m_index.parentOf(exact) != -1) {
        searchPlace(m_index.parentOf(exact), false, job);
    }
    if (!guesses.empty() && m_index.isPrepared(guesses.front().instance))
        addSplitPlaces(guesses.front().instance, job);
}

/// Looks for the very name, and for similar names where that is not there and they may count.
void NameSearch::searchPlace(int instance, bool narrow, Job *job) const
{
    constexpr float LeastForSimilar = 0.5F;
    const CandidateRating::Place place = job->rating.placeOf(instance);
    const bool found = narrow && place.likeness < 1 && searchExact(place, job);
    if (!found && (place.around || place.likeness >= LeastForSimilar))
        job->wide.push_back(instance);
}

bool NameSearch::searchExact(const CandidateRating::Place &place, Job *job) const
{
    const MissingPath &missing = job->missing;
    const QString name =
        m_index.pathOf(place.instance) + QLatin1Char('/') + missing.leaf.toString();
    bool same = false;
    if (missing.bus) {
        if (NETWEIR::RtlNetBus *bus = m_names.bus(name))
            same = job->rating.rate(place, bus, missing.base);
    } else if (NETWEIR::RtlNet *net = m_names.net(name)) {
        same = job->rating.rate(place, net, missing.leaf);
    }
    if (same)
        addMove(place.instance, job);
    return same;
}

/// Children of the instance whose names have words of the missing name.
void NameSearch::addSplitPlaces(int instance, Job *job) const
{
    constexpr std::size_t Most = 2;
    constexpr float LeastCommon = 0.3F;
    std::vector<int> children;
    m_index.findSimilarChildren(instance, job->missing.tokens, &children);
    std::vector<std::pair<float, int>> alike;
    for (const int child : children) {
        const float common = likeness(job->missing.tokens, NameTokens(m_index.nameOf(child)));
        if (common >= LeastCommon)
            alike.emplace_back(-common, child);
    }
    std::sort(alike.begin(), alike.end());
    for (std::size_t i = 0; i < std::min(Most, alike.size()); ++i)
        job->wide.push_back(alike[i].second);
}

int NameSearch::unpreparedOf(const std::vector<int> &instances) const
{
    const auto unprepared =
        std::find_if(instances.cbegin(), instances.cend(),
                     [this](int instance) { return !m_index.isPrepared(instance); });
    return unprepared == instances.cend() ? -1 : *unprepared;
}

void NameSearch::rateEntries(Job *job) const
{
    std::vector<int> entries;
    for (const int instance : job->wide)
        m_index.findSimilarEntries(instance, job->missing.tokens, &entries);
    m_index.findByEnd(job->missing.levels, job->missing.base, &entries);
    std::sort(entries.begin(), entries.end());
    entries.erase(std::unique(entries.begin(), entries.end()), entries.end());
    for (const int entry : entries) {
        const CandidateRating::Place place = job->rating.placeOf(m_index.instanceOf(entry));
        const QString base = m_index.baseOf(entry);
        NETWEIR::RtlNet *net = m_index.netOf(entry);
        const bool same = net ? job->rating.rate(place, net, base)
                              : job->rating.rate(place, m_index.busOf(entry), base);
        if (same)
            addMove(place.instance, job);
    }
}

/// Without the levels that both have at their ends.
void NameSearch::addMove(int instance, Job *job) const
{
    int path = job->result->path;
    if (path == -1 || job->result->moves.size() >= MostMoves)
        return;
    while (m_tree->parentOf(path) != -1 && m_index.parentOf(instance) != -1 &&
           m_tree->nameOf(path) == m_index.nameOf(instance)) {
        path = m_tree->parentOf(path);
        instance = m_index.parentOf(instance);
    }
    job->result->moves.push_back({path, instance});
}

} // namespace TARN
