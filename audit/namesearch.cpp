// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "namesearch.h"

#include "counterpart.h"
#include "designnames.h"

#include <model/netsignals.h>
#include <sdk/netweir.h>

#include <algorithm>

namespace TARN {

namespace {

constexpr float LeastLikeness = 0.6F; ///< What is offered.
constexpr int MostCandidates = 8;
constexpr std::size_t MostMoves = 32;

/// How much a path counts that is unlike.
constexpr float PathShare = 0.6F;

/// How much it says that something with the same name is elsewhere: much when the name has several
/// words and is rare.
float rarityOf(int count, const NameTokens &tokens)
{
    constexpr float ByCount[] = {0, 0.5F, 0.3F, 0.15F};
    if (count >= 4)
        return 0;
    const float meaning = std::max(0.F, std::min(1.F, tokens.meaning() - 0.8F));
    return ByCount[count] * (0.2F + 0.8F * meaning);
}

std::vector<QStringView> levelsOf(const DesignIndex &index, int instance)
{
    std::vector<QStringView> levels;
    for (int i = instance; i != -1; i = index.parentOf(i))
        levels.push_back(index.nameOf(i));
    std::reverse(levels.begin(), levels.end());
    return levels;
}

/// Whether @p below is @p levels or an instance below.
bool isWayTo(const std::vector<QStringView> &levels, const std::vector<QStringView> &below)
{
    return levels.size() <= below.size() &&
           std::equal(levels.cbegin(), levels.cend(), below.cbegin());
}

/// The name without the number at its end, and that number as an index: "x_3" is x and "[3]".
bool splitNumber(QStringView base, NameTokens *front, QString *index)
{
    qsizetype at = base.size();
    while (at > 0 && base[at - 1].isDigit())
        --at;
    if (at == base.size() || at == 0)
        return false;
    *index = QLatin1Char('[') + base.mid(at).toString() + QLatin1Char(']');
    front->add(base.left(at));
    return front->count() > 0;
}

} // namespace

bool isMoreAlike(const NameResult::Candidate &a, const NameResult::Candidate &b)
{
    return a.likeness != b.likeness ? a.likeness > b.likeness : a.name < b.name;
}

int NameSearch::search(const MissingPath &missing, NameResult *result)
{
    m_entries.clear();
    m_places.clear();
    const int path = m_tree->add(missing);
    std::vector<int> places;
    if (path != -1) {
        const int unprepared = m_tree->guess(path);
        if (unprepared != -1)
            return unprepared;
        const int unpreparedPlace = collectPlaces(missing, path, &places);
        if (unpreparedPlace != -1)
            return unpreparedPlace;
    }
    collectEntries(missing, places);
    m_rarity = rarityOf(m_index.countOf(missing.base), missing.tokens);
    m_stays = path != -1 && m_tree->instanceOf(path) != -1;
    for (const int entry : m_entries)
        rate(missing, entry, result);
    std::sort(result->candidates.begin(), result->candidates.end(), isMoreAlike);
    if (result->candidates.size() > MostCandidates)
        result->candidates.resize(MostCandidates);
    return -1;
}

/// The instances in which similar names are looked for. Returns one that is not prepared, or -1.
int NameSearch::collectPlaces(const MissingPath &missing, int path, std::vector<int> *places) const
{
    constexpr std::size_t MostGuesses = 3;
    for (const MissingTree::Guess &guess : m_tree->guessesOf(path)) {
        if (places->size() < MostGuesses)
            places->push_back(guess.instance);
    }
    const int exact = m_tree->instanceOf(path);
    if (exact == -1) {
        std::vector<int> moved;
        m_index.findInstancesByEnd(missing.levels, &moved);
        if (moved.size() <= MostGuesses)
            places->insert(places->end(), moved.begin(), moved.end());
    } else if (m_index.parentOf(exact) != -1) {
        places->push_back(m_index.parentOf(exact));
    }
    for (const int place : *places) {
        if (!m_index.isPrepared(place))
            return place;
    }
    if (!places->empty())
        addSplitPlaces(missing, places->front(), places);
    for (const int place : *places) {
        if (!m_index.isPrepared(place))
            return place;
    }
    return -1;
}

/// Children of the instance whose names have words of the missing name.
void NameSearch::addSplitPlaces(const MissingPath &missing, int instance,
                                std::vector<int> *places) const
{
    constexpr std::size_t Most = 2;
    constexpr float LeastCommon = 0.3F;
    std::vector<int> children;
    m_index.findSimilarChildren(instance, missing.tokens, &children);
    std::vector<std::pair<float, int>> alike;
    for (const int child : children) {
        const float common = likeness(missing.tokens, NameTokens(m_index.nameOf(child)));
        if (common >= LeastCommon)
            alike.emplace_back(-common, child);
    }
    std::sort(alike.begin(), alike.end());
    for (std::size_t i = 0; i < std::min(Most, alike.size()); ++i)
        places->push_back(alike[i].second);
}

void NameSearch::collectEntries(const MissingPath &missing, const std::vector<int> &places)
{
    for (const int place : places)
        m_index.findSimilarEntries(place, missing.tokens, &m_entries);
    m_index.findByEnd(missing.levels, missing.base, &m_entries);
    std::sort(m_entries.begin(), m_entries.end());
    m_entries.erase(std::unique(m_entries.begin(), m_entries.end()), m_entries.end());
}

const NameSearch::Place &NameSearch::placeOf(const MissingPath &missing, int instance)
{
    const auto known =
        std::find_if(m_places.cbegin(), m_places.cend(),
                     [instance](const Place &place) { return place.instance == instance; });
    if (known != m_places.cend())
        return *known;
    Place place{instance, 0, levelsOf(m_index, instance)};
    place.likeness = pathLikeness(missing.levels, place.levels);
    // An instance that is still there was not renamed.
    constexpr float OtherInstance = 0.4F;
    const bool around =
        isWayTo(place.levels, missing.levels) || isWayTo(missing.levels, place.levels);
    if (m_stays && !around)
        place.likeness *= OtherInstance;
    m_places.push_back(place);
    return m_places.back();
}

void NameSearch::rate(const MissingPath &missing, int entry, NameResult *result)
{
    const Place &place = placeOf(missing, m_index.instanceOf(entry));
    if (m_index.netOf(entry))
        rateNet(missing, place, entry, result);
    else
        rateBus(missing, place, entry, result);
}

/// The likeness of the whole from that of the last part.
float NameSearch::rated(const MissingPath &missing, const Place &place, QStringView base,
                        float leaf) const
{
    constexpr float StillThere = 0.4F;
    const float rarity = base == missing.base ? m_rarity * (m_stays ? StillThere : 1) : 0;
    const float path = 1 - (1 - place.likeness) * (1 - rarity);
    const float apart = leaf * (1 - PathShare + PathShare * path);
    if (place.likeness == 1)
        return apart;
    constexpr float Joined = 0.9F;
    return std::max(apart, Joined * joinedLikeness(missing, place.levels, base));
}

void NameSearch::rateNet(const MissingPath &missing, const Place &place, int entry,
                         NameResult *result)
{
    const NETWEIR::RtlNet *net = m_index.netOf(entry);
    const QStringView base = m_index.baseOf(entry);
    constexpr float SameWords = 0.98F;
    constexpr float SingleForBus = 0.8F;
    constexpr float SameBase = 0.95F;
    constexpr float LeastForBus = 0.9F;
    const bool same = base == missing.leaf;
    float leaf = same ? 1 : SameWords * likeness(missing.allTokens, NameTokens(base));
    if (missing.bus)
        leaf = base == missing.base ? SameBase : leaf >= LeastForBus ? leaf * SingleForBus : 0;
    if (isExcluded(net, missing.type))
        return;
    if (same && place.likeness < 1)
        addMove(m_tree->add(missing), place.instance, result);
    const float alike = rated(missing, place, base, leaf);
    if (alike >= LeastLikeness && leaf > 0)
        result->candidates.append({net->fullPathName(), false, alike, place.likeness == 1});
}

void NameSearch::rateBus(const MissingPath &missing, const Place &place, int entry,
                         NameResult *result)
{
    const NETWEIR::RtlNetBus *bus = m_index.busOf(entry);
    const QStringView base = m_index.baseOf(entry);
    constexpr float SameWords = 0.98F;
    const bool same = base == missing.base;
    const float leaf = same ? 1 : SameWords * likeness(missing.tokens, NameTokens(base));
    if (!missing.bus) {
        if (!missing.index.isEmpty()) {
            rateBit(missing, place, entry, missing.index, rated(missing, place, base, leaf),
                    result);
            return;
        }
        NameTokens front;
        QString index;
        if (splitNumber(missing.base, &front, &index)) {
            constexpr float OtherForm = 0.95F;
            const float alike = OtherForm * likeness(front, NameTokens(base));
            rateBit(missing, place, entry, index, rated(missing, place, QStringView(), alike),
                    result);
        }
    }
    if (isExcluded(bus, missing.type))
        return;
    float kind = 1;
    const QStringView full(bus->fullBusName());
    const QStringView leafName = full.mid(base.data() - full.data());
    if (!missing.bus) {
        constexpr float BusForSingle = 0.8F;
        constexpr float OneBit = 0.95F;
        if (leaf < OneBit)
            return;
        kind = same || bus->nets().size() == 1 ? OneBit : BusForSingle;
    } else if (leafName != missing.leaf) {
        constexpr float OtherRange = 0.97F;
        const bool sameRange = leafName.mid(base.size()) == missing.leaf.mid(missing.base.size());
        kind = sameRange ? 1 : OtherRange;
    } else if (place.likeness < 1) {
        addMove(m_tree->add(missing), place.instance, result);
    }
    const float alike = kind * rated(missing, place, base, leaf);
    if (alike >= LeastLikeness)
        result->candidates.append({bus->fullBusName(), true, alike, place.likeness == 1});
}

/// The bit of a bus that has the index.
void NameSearch::rateBit(const MissingPath &missing, const Place &place, int entry,
                         QStringView index, float likeness, NameResult *result) const
{
    if (likeness < LeastLikeness)
        return;
    const QStringView base = baseOfBusName(m_index.busOf(entry)->fullBusName());
    const QString name = base.toString() + index.toString();
    if (!usableNet(name, missing.type, m_names))
        return;
    const bool same = name.endsWith(missing.leaf) && base.endsWith(missing.base);
    if (same && place.likeness < 1)
        addMove(m_tree->add(missing), place.instance, result);
    result->candidates.append({name, false, likeness, place.likeness == 1});
}

/// Without the levels that both have at their ends.
void NameSearch::addMove(int path, int instance, NameResult *result) const
{
    if (path == -1 || result->moves.size() >= MostMoves)
        return;
    while (m_tree->parentOf(path) != -1 && m_index.parentOf(instance) != -1 &&
           m_tree->nameOf(path) == m_index.nameOf(instance)) {
        path = m_tree->parentOf(path);
        instance = m_index.parentOf(instance);
    }
    result->moves.push_back({path, instance});
}

} // namespace TARN
