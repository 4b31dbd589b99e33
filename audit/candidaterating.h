// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "designindex.h"
#include "missingpath.h"

#include <QVector>

#include <deque>
#include <vector>

namespace TARN {

class DesignNames;

/// Something that may take the place of something missing.
struct RatedName
{
    QString name;
    bool bus = false;
    float likeness = 0; ///< From LeastLikeness to 1.
    bool sameInstance = false;
};

/// The best first; no two names are equal.
bool isMoreAlike(const RatedName &a, const RatedName &b);

/// Says how likely nets and buses of a design are what became of one missing name. Keeps those that
/// are likely enough to be offered and can be on ports of the kind. Owns nothing.
///
/// A name counts as it is alike, less the more its instance differs. It counts in full in the same
/// instance, so a similar name there comes before the same name elsewhere. A bus counts a bit less
/// with another range, and so does a net in the place of a bus.
class CandidateRating
{
public:
    /// What is less likely is not offered.
    static constexpr float LeastLikeness = 0.6F;

    /// An instance of the design, compared with that of the missing name.
    struct Place
    {
        int instance;
        float likeness; ///< 1 for the very path.
        bool around;    ///< One of the two is below the other.
    };

    /// @p stays: the instance of the missing name is still in the design.
    CandidateRating(const DesignNames &names, const DesignIndex &index, const MissingPath &missing,
                    bool stays);

    Place placeOf(int instance);

    /// Rates something in the place. @p base is its name there, of a bus without the range. True
    /// when it has the very name of what is missing in another instance.
    bool rate(const Place &place, NETWEIR::RtlNet *net, QStringView base);
    bool rate(const Place &place, NETWEIR::RtlNetBus *bus, QStringView base);

    /// What can be offered, the best first, at most @p most.
    QVector<RatedName> best(int most) const;

private:
    struct KnownPlace
    {
        Place place;
        std::vector<QStringView> levels;
    };

    float rated(const Place &place, QStringView base, float leaf) const;
    const std::vector<QStringView> &levelsOf(const Place &place) const;
    float likenessOfNet(const Place &place, QStringView base) const;
    float likenessOfBus(const Place &place, NETWEIR::RtlNetBus *bus, QStringView name,
                        QStringView base) const;
    bool rateBits(const Place &place, QStringView fullBase, QStringView base);
    bool addBit(const Place &place, QStringView fullBase, QStringView index, float likeness);
    void add(const Place &place, const QString &name, bool bus, float likeness);

    const DesignNames &m_names;
    const DesignIndex &m_index;
    const MissingPath &m_missing;
    const bool m_stays;
    float m_rarity; ///< How much it says that something elsewhere has the name.
    std::deque<KnownPlace> m_places;
    QVector<RatedName> m_rated;
};

} // namespace TARN
