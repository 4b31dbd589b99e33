// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "findingcandidates.h"

#include "designnames.h"
#include "replacement.h"

#include <model/configsnapshot.h>

#include <algorithm>

namespace TARN {

namespace {

/// The signal at @p place; null when there is none.
const SignalItem *signalAt(const ConfigSnapshot &config, const Place &place)
{
    if (place.core < 0 || place.core >= config.cores.size())
        return nullptr;
    const CoreSnapshot &core = *config.cores.at(place.core).content;
    const auto &ports = place.type == ProbeTypeOut ? core.probeOuts : core.probeIns;
    if (place.port < 0 || place.port >= ports.size())
        return nullptr;
    const QList<SignalItem> &items = ports.at(place.port)->signals;
    return place.signal < 0 || place.signal >= items.size() ? nullptr : &items.at(place.signal);
}

} // namespace

bool isMissing(Rule rule)
{
    return rule == Rule::NetMissing || rule == Rule::ClockMissing;
}

QString nameAt(const ConfigSnapshot &config, const Place &place)
{
    if (place.port < 0) {
        const bool exists = place.core >= 0 && place.core < config.cores.size();
        return exists ? config.cores.at(place.core).content->userClock : QString();
    }
    const SignalItem *item = signalAt(config, place);
    return item ? item->name : QString();
}

ProbeType typeOf(const Place &place)
{
    return place.port < 0 ? ProbeTypeIn : place.type;
}

std::optional<MissingName> missingNameOf(Rule rule, const Place &place,
                                         const ConfigSnapshot &config)
{
    if (!isMissing(rule))
        return std::nullopt;
    const QString name = nameAt(config, place);
    if (name.isEmpty()) // No clock is given.
        return std::nullopt;
    const SignalItem *item = signalAt(config, place);
    const bool bus = item && !item->members.isEmpty();
    return MissingName{name, bus, typeOf(place)};
}

QVector<Replacement> candidatesOf(const Finding &finding, const CandidateSearch &search,
                                  const DesignNames &names)
{
    if (finding.rule == Rule::BusChanged) {
        const auto bus = busInPlaceOf(finding.name, finding.place.type, names);
        if (!bus)
            return {};
        return {{Replacement::Signal, finding.name, bus->name, true, 1}};
    }
    if (!isMissing(finding.rule))
        return {};
    QVector<Replacement> found = search.candidates(finding.name, typeOf(finding.place));
    if (finding.place.port < 0) // A user clock is no bus.
        found.erase(std::remove_if(found.begin(), found.end(),
                                   [](const Replacement &by) { return by.bus; }),
                    found.end());
    return found;
}

} // namespace TARN
