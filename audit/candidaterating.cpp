// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "candidaterating.h"

#include "counterpart.h"
#include "designnames.h"

#include <model/netsignals.h>
#include <sdk/netweir.h>

#include <algorithm>

namespace TARN {

namespace {

/// How much of the likeness an instance with nothing in common takes away.
constexpr float PathShare = 0.6F;

// What remains of the likeness when something is not the same.
constexpr float SameWords = 0.98F;    ///< The name has the same words, written in another way.
constexpr float OtherRange = 0.97F;   ///< A bus with another range.
constexpr float OtherKind = 0.95F;    ///< A net for a bus of that name, or a bus for a net.
constexpr float OtherForm = 0.95F;    ///< A bit for a net with a number in its name.
constexpr float OtherNet = 0.8F;      ///< A net for a bus with a similar name, or a bus for a net.
constexpr float LeastForOther = 0.9F; ///< How alike their names have to be.
constexpr float OnlyBit = 0.99F;      ///< The bit of a bus that has one.
constexpr float JoinedWords = 0.9F;   ///< Words of the instance have become words of the name.

/// How much it says that something elsewhere has the same name: much when the name has several
/// words and is rare.
float rarityOf(int count, const NameTokens &tokens)
{
    constexpr float ByCount[] = {0, 0.5F, 0.3F, 0.15F};
    if (count >= 4)
        return 0;
    const float meaning = std::clamp(tokens.meaning() - 0.8F, 0.F, 1.F);
    return ByCount[count] * (0.2F + 0.8F * meaning);
}

/// The likeness of two names in one instance. A scope in front of a name counts like an instance:
/// "lamp[0].level" and "led[0].level". @p tokens are those of @p missing.
float leafLikeness(QStringView missing, const NameTokens &tokens, QStringView base)
{
    const float whole = likeness(tokens, NameTokens(base));
    const qsizetype scope = missing.lastIndexOf(QLatin1Char('.'));
    const qsizetype other = base.lastIndexOf(QLatin1Char('.'));
    if (scope < 1 || other < 1)
        return whole;
    const float unlike =
        1 - likeness(NameTokens(missing.left(scope)), NameTokens(base.left(other)));
    const float last =
        likeness(NameTokens(missing.mid(scope + 1)), NameTokens(base.mid(other + 1)));
    return std::max(whole, last * (1 - PathShare * unlike));
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

bool isMoreAlike(const RatedName &a, const RatedName &b)
{
    return a.likeness != b.likeness ? a.likeness > b.likeness : a.name < b.name;
}

CandidateRating::CandidateRating(const DesignNames &names, const DesignIndex &index,
                                 const MissingPath &missing, bool stays)
    : m_names(names)
    , m_index(index)
    , m_missing(missing)
    , m_stays(stays)
    , m_rarity(rarityOf(index.countOf(missing.base), missing.tokens))
{
    // Then it is less likely that the name moved.
    constexpr float StillThere = 0.4F;
    if (stays)
        m_rarity *= StillThere;
}

CandidateRating::Place CandidateRating::placeOf(int instance)
{
    for (const KnownPlace &known : m_places) {
        if (known.place.instance == instance)
            return known.place;
    }
    KnownPlace known{{instance, 0, false}, {}};
    Place &place = known.place;
    if (std::size_t(m_index.depthOf(instance)) < MaximumLevels)
        known.levels = m_index.levelsOf(instance);
    place.likeness = pathLikeness(m_missing.levels, known.levels);
    place.around =
        isWayTo(known.levels, m_missing.levels) || isWayTo(m_missing.levels, known.levels);
    // An instance that is still there was not renamed.
    constexpr float OtherInstance = 0.4F;
    if (m_stays && !place.around)
        place.likeness *= OtherInstance;
    m_places.push_back(known);
    return place;
}

const std::vector<QStringView> &CandidateRating::levelsOf(const Place &place) const
{
    return std::find_if(
               m_places.cbegin(), m_places.cend(),
               [&place](const KnownPlace &known) { return known.place.instance == place.instance; })
        ->levels;
}

/// The likeness of the whole from @p leaf, that of the last part.
float CandidateRating::rated(const Place &place, QStringView base, float leaf) const
{
    if (place.likeness == 1)
        return leaf;
    const float rarity = base == m_missing.base ? m_rarity : 0;
    const float unlike = (1 - place.likeness) * (1 - rarity);
    const float apart = leaf * (1 - PathShare * unlike);
    if (apart >= JoinedWords)
        return apart;
    return std::max(apart, JoinedWords * joinedLikeness(m_missing, levelsOf(place), base));
}

float CandidateRating::likenessOfNet(const Place &place, QStringView base) const
{
    if (base == m_missing.leaf)
        return rated(place, base, 1);
    if (m_missing.bus && base == m_missing.base)
        return rated(place, base, OtherKind);
    const float leaf = SameWords * leafLikeness(m_missing.leaf, m_missing.allTokens, base);
    if (!m_missing.bus)
        return rated(place, base, leaf);
    return leaf >= LeastForOther ? rated(place, base, leaf * OtherNet) : 0;
}

bool CandidateRating::rate(const Place &place, NETWEIR::RtlNet *net, QStringView base)
{
    if (isExcluded(net, m_missing.type))
        return false;
    const float alike = likenessOfNet(place, base);
    if (alike >= LeastLikeness) // Most are not, and need no name.
        add(place, net->fullPathName(), false, alike);
    return !m_missing.bus && base == m_missing.leaf && place.likeness < 1;
}

float CandidateRating::likenessOfBus(const Place &place, NETWEIR::RtlNetBus *bus, QStringView name,
                                     QStringView base) const
{
    const bool same = base == m_missing.base;
    const float leaf = same ? 1 : SameWords * leafLikeness(m_missing.base, m_missing.tokens, base);
    if (!m_missing.bus) {
        if (leaf < LeastForOther)
            return 0;
        const bool alike = same || bus->nets().size() == 1;
        return (alike ? OtherKind : OtherNet) * rated(place, base, leaf);
    }
    const bool sameRange = name.endsWith(m_missing.range());
    return (sameRange ? 1 : OtherRange) * rated(place, base, leaf);
}

bool CandidateRating::rate(const Place &place, NETWEIR::RtlNetBus *bus, QStringView base)
{
    const QString name = bus->fullBusName();
    if (!m_missing.bus && rateBits(place, baseOfBusName(name), base))
        return place.likeness < 1;
    if (isExcluded(bus, m_missing.type) || !m_missing.index.isEmpty())
        return false;
    const float alike = likenessOfBus(place, bus, name, base);
    add(place, name, true, alike);
    // A user clock can be the only bit of a bus, not the bus.
    if (!m_missing.bus && bus->nets().size() == 1)
        add(place, bus->nets().first()->fullPathName(), false, OnlyBit * alike);
    return m_missing.bus && base == m_missing.base && place.likeness < 1 &&
           QStringView(name).endsWith(m_missing.leaf);
}

/// Rates the bit of a bus that has the index of what is missing, or the number at its end. True
/// when that is the very name.
bool CandidateRating::rateBits(const Place &place, QStringView fullBase, QStringView base)
{
    if (!m_missing.index.isEmpty()) {
        const bool same = base == m_missing.base;
        const float leaf =
            same ? 1 : SameWords * leafLikeness(m_missing.base, m_missing.tokens, base);
        return addBit(place, fullBase, m_missing.index, rated(place, base, leaf)) && same;
    }
    NameTokens front;
    QString index;
    if (splitNumber(m_missing.base, &front, &index)) {
        const float leaf = OtherForm * likeness(front, NameTokens(base));
        addBit(place, fullBase, index, rated(place, QStringView(), leaf));
    }
    return false;
}

/// False when there is no such bit, or it cannot be used.
bool CandidateRating::addBit(const Place &place, QStringView fullBase, QStringView index,
                             float likeness)
{
    if (likeness < LeastLikeness)
        return false;
    const QString name = fullBase.toString() + index.toString();
    if (!usableNet(name, m_missing.type, m_names))
        return false;
    add(place, name, false, likeness);
    return true;
}

void CandidateRating::add(const Place &place, const QString &name, bool bus, float likeness)
{
    if (likeness >= LeastLikeness)
        m_rated.append({name, bus, likeness, place.likeness == 1});
}

QVector<RatedName> CandidateRating::best(int most) const
{
    QVector<RatedName> best = m_rated;
    std::sort(best.begin(), best.end(), isMoreAlike);
    const auto isSame = [](const RatedName &a, const RatedName &b) { return a.name == b.name; };
    best.erase(std::unique(best.begin(), best.end(), isSame), best.end());
    return best.mid(0, most);
}

} // namespace TARN
