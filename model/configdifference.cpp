// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configdifference.h"

namespace TARN {

namespace {

using Ports = QVector<std::shared_ptr<const PortSnapshot>>;

/// Position of the first signal of @p after that differs, -1 when it has none there.
int firstOtherSignal(const QList<SignalItem> &before, const QList<SignalItem> &after)
{
    int i = 0;
    while (i < before.size() && i < after.size() && sameSignals(before.mid(i, 1), after.mid(i, 1)))
        ++i;
    return i < after.size() ? i : -1;
}

bool sameButIndex(const PortSnapshot &left, const PortSnapshot &right)
{
    return left.initialValue == right.initialValue && sameSignals(left.signals, right.signals);
}

/// Position of the first port that came, or that took the place of one that went.
int firstOtherPort(const Ports &before, const Ports &after)
{
    int i = 0;
    while (i < before.size() && i < after.size() &&
           (before.at(i) == after.at(i) || sameButIndex(*before.at(i), *after.at(i))))
        ++i;
    return qMin(i, after.size() - 1);
}

ConfigDifference portDifference(const PortSnapshot &before, const PortSnapshot &after)
{
    ConfigDifference found;
    if (!sameSignals(before.signals, after.signals)) {
        found.kind = ConfigDifference::Signals;
        found.signal = firstOtherSignal(before.signals, after.signals);
    } else if (before.initialValue != after.initialValue) {
        found.kind = ConfigDifference::InitialValue;
    } else {
        found.kind = ConfigDifference::Several;
    }
    return found;
}

ConfigDifference portsDifference(const Ports &before, const Ports &after, ProbeType type)
{
    ConfigDifference found;
    if (before.size() != after.size()) {
        found.kind = before.size() < after.size() ? ConfigDifference::PortsAdded
                                                  : ConfigDifference::PortsRemoved;
        found.count = qAbs(before.size() - after.size());
        found.port = firstOtherPort(before, after);
    } else {
        for (int i = 0; i < before.size(); ++i) {
            if (before.at(i) == after.at(i))
                continue;
            if (found.kind != ConfigDifference::None) {
                found.kind = ConfigDifference::Several;
                break;
            }
            found = portDifference(*before.at(i), *after.at(i));
            found.port = i;
        }
    }
    found.type = type;
    return found;
}

ConfigDifference clockDifference(const CoreSnapshot &before, const CoreSnapshot &after)
{
    ConfigDifference found;
    if (before.userClock != after.userClock || before.syncUserClock != after.syncUserClock) {
        found.kind = ConfigDifference::UserClock;
        found.type = ProbeTypeOut;
    }
    return found;
}

ConfigDifference coreDifference(const CoreSnapshot &before, const CoreSnapshot &after)
{
    ConfigDifference found;
    for (const ConfigDifference &part :
         {portsDifference(before.probeIns, after.probeIns, ProbeTypeIn),
          portsDifference(before.probeOuts, after.probeOuts, ProbeTypeOut),
          clockDifference(before, after)}) {
        if (part.kind == ConfigDifference::None)
            continue;
        if (found.kind != ConfigDifference::None) {
            found.kind = ConfigDifference::Several;
            break;
        }
        found = part;
    }
    return found;
}

} // namespace

ChangedCores changedCores(const ConfigSnapshot &before, const ConfigSnapshot &after)
{
    const int beforeCount = before.cores.size();
    const int afterCount = after.cores.size();
    const int common = qMin(beforeCount, afterCount);
    const auto same = [&](int i, int k) {
        return before.cores.at(i).content == after.cores.at(k).content;
    };
    int front = 0;
    while (front < common && same(front, front))
        ++front;
    int back = 0;
    while (back < common - front && same(beforeCount - 1 - back, afterCount - 1 - back))
        ++back;
    return {front, beforeCount - front - back, afterCount - front - back};
}

ConfigDifference difference(const ConfigSnapshot &before, const ConfigSnapshot &after)
{
    const ChangedCores changed = changedCores(before, after);
    ConfigDifference found;
    if (changed.before == 0 && changed.after == 0)
        return found;
    if (changed.before > 0 && changed.after > 0) {
        found = coreDifference(*before.cores.at(changed.first).content,
                               *after.cores.at(changed.first).content);
        if (changed.before > 1 || changed.after > 1)
            found.kind = ConfigDifference::Several;
    } else {
        found.kind =
            changed.before == 0 ? ConfigDifference::CoresAdded : ConfigDifference::CoresRemoved;
        found.count = changed.before + changed.after;
    }
    found.core = qMin(changed.first, after.cores.size() - 1);
    return found;
}

} // namespace TARN
