// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "prefixsearch.h"

#include "counterpart.h"

#include <algorithm>
#include <iterator>

namespace TARN {

namespace {

// Steps of advance().
constexpr std::size_t NamesAtOnce = 64;

constexpr std::size_t MostVoted = 8; ///< Moves of a path that are tried because names propose them.
constexpr std::size_t MostCompared = 64;
constexpr int MostSiblings = 16;       ///< And because the instance may just be renamed.
constexpr std::size_t MostChanges = 2; ///< That are offered for a name.

/// From here on the name of the instance says enough.
constexpr float AlikePath = 0.5F;
/// How much more alike it has to be than others that explain the same; and how much, if it is not
/// alike enough by itself.
constexpr float Lead = 0.05F;
constexpr float ClearLead = 0.25F;
/// A name with such a candidate in its own instance did not move.
constexpr float Stayed = 0.7F;
/// Elsewhere it has to be more alike to count more than an instance with another name.
constexpr float Better = 0.8F;

bool isBetter(const PrefixSearch::Change &a, const PrefixSearch::Change &b)
{
    if (a.explains != b.explains)
        return a.explains > b.explains;
    if (a.likeness != b.likeness)
        return a.likeness > b.likeness;
    return a.from != b.from ? a.from < b.from : a.to < b.to;
}

/// Whether most of what @p trial explains is explained by @p other as well.
bool explainsTheSame(const PrefixSearch::Change &other, const PrefixSearch::Change &trial)
{
    std::size_t common = 0;
    auto at = other.names.cbegin();
    for (const int position : trial.names) {
        at = std::lower_bound(at, other.names.cend(), position);
        if (at == other.names.cend())
            break;
        common += *at == position ? 1 : 0;
    }
    return common * 2 > trial.names.size();
}

} // namespace

PrefixSearch::PrefixSearch(const DesignNames &names, const DesignIndex &index, MissingTree *tree,
                           std::vector<Name> missing)
    : m_names(names)
    , m_index(index)
    , m_tree(tree)
    , m_missing(std::move(missing))
    , m_changesOfNames(m_missing.size())
{
}

bool PrefixSearch::advance()
{
    switch (m_stage) {
    case Stage::Moves:
        collectMoves();
        return false;
    case Stage::Names:
        collectNames();
        return false;
    case Stage::Tries:
        tryNext();
        return false;
    case Stage::Order:
        orderChanges();
        return false;
    case Stage::Assignment:
        assignNext();
        return false;
    case Stage::Done:
        return true;
    }
    return true;
}

/// What the names propose, by the path that would have moved.
void PrefixSearch::collectMoves()
{
    const std::size_t end = std::min(m_next + NamesAtOnce, m_missing.size());
    for (; m_next < end; ++m_next) {
        for (const NameResult::Move &move : m_missing[m_next].result->moves)
            ++m_sources[move.path].votes[move.instance];
        // An instance that is gone may have any name now.
        int path = m_missing[m_next].result->path;
        while (path != -1 && m_tree->parentOf(path) != -1 && m_tree->instanceOf(path) == -1 &&
               m_tree->instanceOf(m_tree->parentOf(path)) == -1)
            path = m_tree->parentOf(path);
        if (path != -1 && m_tree->instanceOf(path) == -1)
            m_sources[path];
    }
    if (m_next < m_missing.size())
        return;
    m_next = 0;
    m_stage = Stage::Names;
}

void PrefixSearch::collectNames()
{
    const std::size_t end = std::min(m_next + NamesAtOnce, m_missing.size());
    for (; m_next < end; ++m_next) {
        for (int path = m_missing[m_next].result->path; path != -1; path = m_tree->parentOf(path)) {
            const auto source = m_sources.find(path);
            if (source != m_sources.end())
                source->second.names.push_back(int(m_next));
        }
    }
    if (m_next < m_missing.size())
        return;
    for (auto &[path, source] : m_sources) {
        if (source.names.size() > 1)
            m_order.push_back(path);
    }
    std::sort(m_order.begin(), m_order.end());
    m_next = 0;
    m_stage = Stage::Tries;
}

void PrefixSearch::chooseTargets(int path, Source *source) const
{
    struct Vote
    {
        int votes;
        float likeness;
        int instance;
    };
    std::vector<Vote> voted;
    for (const auto &[instance, votes] : source->votes)
        voted.push_back({votes, 0, instance});
    std::sort(voted.begin(), voted.end(), [](const Vote &a, const Vote &b) {
        return a.votes != b.votes ? a.votes > b.votes : a.instance < b.instance;
    });
    voted.resize(std::min(MostCompared, voted.size()));
    const QString from = m_tree->pathOf(path);
    for (Vote &vote : voted)
        vote.likeness = pathLikeness(levelsOf(from), m_index.levelsOf(vote.instance));
    std::stable_sort(voted.begin(), voted.end(), [](const Vote &a, const Vote &b) {
        return float(a.votes) * (1 + a.likeness) > float(b.votes) * (1 + b.likeness);
    });
    for (std::size_t i = 0; i < std::min(MostVoted, voted.size()); ++i)
        source->targets.push_back(voted[i].instance);
    addSiblings(path, source);
}

/// An instance that was renamed in its place has no common name with the new one.
void PrefixSearch::addSiblings(int path, Source *source) const
{
    const int parent = m_tree->parentOf(path);
    const int exactParent = parent == -1 ? -1 : m_tree->instanceOf(parent);
    if (m_tree->instanceOf(path) != -1 || exactParent == -1 ||
        m_index.childCountOf(exactParent) > MostSiblings)
        return;
    const int first = m_index.firstChildOf(exactParent);
    for (int sibling = first; sibling < first + m_index.childCountOf(exactParent); ++sibling) {
        if (source->votes.count(sibling) == 0)
            source->targets.push_back(sibling);
    }
}

/// Tries the next target of the next source with some of the names.
void PrefixSearch::tryNext()
{
    if (m_next == m_order.size()) {
        m_stage = Stage::Order;
        return;
    }
    const int path = m_order[m_next];
    Source &source = m_sources[path];
    if (source.targets.empty())
        chooseTargets(path, &source);
    if (m_target == source.targets.size()) {
        judge();
        m_target = 0;
        ++m_next;
        return;
    }
    if (m_nextName == 0) {
        m_trial = Change();
        m_trial.from = m_tree->pathOf(path);
        m_trial.to = m_index.pathOf(source.targets[m_target]);
    }
    const std::size_t end = std::min(m_nextName + NamesAtOnce, source.names.size());
    for (; m_nextName < end; ++m_nextName)
        tryName(source.names[m_nextName]);
    if (m_nextName < source.names.size())
        return;
    m_nextName = 0;
    ++m_target;
    finishTrial();
}

void PrefixSearch::tryName(int position)
{
    const Name &missing = m_missing[std::size_t(position)];
    const QString name = movedName(missing.missing->name, m_trial.from, m_trial.to);
    const ProbeType type = missing.missing->type;
    const bool found = missing.missing->bus ? usableBus(name, type, m_names) != nullptr
                                            : usableNet(name, type, m_names) != nullptr;
    if (!found)
        return;
    m_trial.names.push_back(position);
    m_trial.explains += missing.count;
}

/// Keeps what explains at least two different names that seem to have moved, unless half of the
/// names or more have something similar where they were.
void PrefixSearch::finishTrial()
{
    std::vector<int> moved;
    std::copy_if(m_trial.names.cbegin(), m_trial.names.cend(), std::back_inserter(moved),
                 [this](int position) { return !hasStayed(position); });
    const auto another = [this, &moved](int position) {
        return m_missing[std::size_t(position)].missing->name !=
               m_missing[std::size_t(moved.front())].missing->name;
    };
    if (moved.size() * 2 <= m_trial.names.size() ||
        std::none_of(moved.cbegin(), moved.cend(), another))
        return;
    nameMovedInstance();
    m_trial.stays = isInDesign(m_trial.from) && !isBelow(m_trial.to, m_trial.from) &&
                    !isBelow(m_trial.from, m_trial.to);
    m_trial.likeness = pathLikeness(levelsOf(m_trial.from), levelsOf(m_trial.to));
    m_trials.push_back(m_trial);
}

/// Whether the design has an instance with that path.
bool PrefixSearch::isInDesign(const QString &path) const
{
    const std::vector<QStringView> levels = levelsOf(path);
    int instance = levels.front() == m_index.nameOf(0) ? 0 : -1;
    for (std::size_t level = 1; level < levels.size() && instance != -1; ++level)
        instance = m_index.childOf(instance, levels[level]);
    return instance != -1;
}

/// Names the instance that moved, if it is one, instead of those between which it moved: a/x that
/// is b/x now, where a is still there or b was above.
void PrefixSearch::nameMovedInstance()
{
    const int path = m_order[m_next];
    if (m_tree->instanceOf(path) == -1 && !isBelow(m_trial.from, m_trial.to))
        return;
    const int start = m_trial.from.size();
    const auto levelOf = [this, start](int position) {
        const QString &name = m_missing[std::size_t(position)].missing->name;
        return name.midRef(start, name.indexOf(QLatin1Char('/'), start + 1) - start);
    };
    const QStringRef level = levelOf(m_trial.names.front());
    const auto isOther = [&](int position) {
        const QString &name = m_missing[std::size_t(position)].missing->name;
        return name.indexOf(QLatin1Char('/'), start + 1) == -1 || levelOf(position) != level;
    };
    if (std::any_of(m_trial.names.cbegin(), m_trial.names.cend(), isOther))
        return;
    m_trial.from += level;
    m_trial.to += level;
}

/// Takes over the trials of one source that say something: the name of the instance is alike, or it
/// is gone and this is the only one that explains most of what is missing. When two are as good,
/// neither counts.
void PrefixSearch::judge()
{
    const std::size_t below = m_sources[m_order[m_next]].names.size();
    for (const Change &trial : m_trials) {
        bool unique = true;
        float rival = 0; // The likeness of the likeliest other.
        for (const Change &other : m_trials) {
            if (&other == &trial || other.explains < trial.explains ||
                !explainsTheSame(other, trial))
                continue;
            unique = false;
            rival = std::max(rival, other.likeness);
        }
        const float lead = trial.likeness - rival;
        const bool alike = trial.likeness >= AlikePath && (unique || lead > Lead);
        const bool explainsMost = unique && trial.names.size() * 2 >= below;
        if (alike || (!trial.stays && (explainsMost || lead > ClearLead)))
            m_changes.push_back(trial);
    }
    m_trials.clear();
}

/// Whether the name has something similar in its own instance.
bool PrefixSearch::hasStayed(int position) const
{
    const QVector<RatedName> &own = m_missing[std::size_t(position)].result->candidates;
    return !own.isEmpty() && own.first().sameInstance && own.first().likeness >= Stayed;
}

/// Whether the name has something more alike elsewhere than where the change leads.
bool PrefixSearch::hasBetter(int position, const Change &change) const
{
    const Name &missing = m_missing[std::size_t(position)];
    if (change.likeness >= AlikePath || missing.result->candidates.isEmpty())
        return false;
    const RatedName &own = missing.result->candidates.first();
    return own.likeness >= Better &&
           own.name != movedName(missing.missing->name, change.from, change.to);
}

void PrefixSearch::orderChanges()
{
    std::sort(m_changes.begin(), m_changes.end(), isBetter);
    const auto isSame = [](const Change &a, const Change &b) {
        return a.from == b.from && a.to == b.to;
    };
    m_changes.erase(std::unique(m_changes.begin(), m_changes.end(), isSame), m_changes.end());
    m_next = 0;
    m_stage = Stage::Assignment;
}

/// Gives the next change to the names that it explains, unless they have better ones.
void PrefixSearch::assignNext()
{
    if (m_next == m_changes.size()) {
        m_stage = Stage::Done;
        return;
    }
    const Change &change = m_changes[m_next];
    const auto better =
        std::count_if(change.names.cbegin(), change.names.cend(),
                      [this, &change](int position) { return hasBetter(position, change); });
    // What explains most of them at once is right even where one of them looks better elsewhere.
    const bool chance = std::size_t(better) * 2 > change.names.size();
    bool best = false;
    for (const int position : change.names) {
        std::vector<int> &changes = m_changesOfNames[std::size_t(position)];
        if (changes.size() == MostChanges || (chance && hasBetter(position, change)))
            continue;
        best |= changes.empty();
        changes.push_back(int(m_next));
    }
    if (best)
        m_best.push_back(int(m_next));
    ++m_next;
}

} // namespace TARN
