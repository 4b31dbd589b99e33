// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "signalmerge.h"

#include "incomingsignals.h"

#include <QSet>

#include <algorithm>
#include <iterator>

namespace TARN {

namespace {

bool coversSingle(const SignalItem &bus, const SignalItem &signal)
{
    if (!signal.members.isEmpty())
        return false;
    return std::any_of(bus.members.cbegin(), bus.members.cend(),
                       [&signal](const SignalItem &member) { return member.name == signal.name; });
}

} // namespace

// NOLINTBEGIN(performance-unnecessary-value-param): by value in the interface
bool isBussignalInBus(SignalItem bus, SignalItem signal)
{
    return coversSingle(bus, signal);
}

void CheckRepeatSignal(SignalItem &signal, QList<SignalItem> &list)
{
    const auto same = std::find_if(list.begin(), list.end(), [&signal](const SignalItem &entry) {
        return entry.name == signal.name;
    });
    if (same != list.end())
        list.erase(same);
}

void CheckBus(QList<SignalItem> &list, SignalItem item)
{
    if (item.members.isEmpty()) {
        const bool covered =
            std::any_of(list.cbegin(), list.cend(),
                        [&item](const SignalItem &entry) { return coversSingle(entry, item); });
        if (covered)
            return;
    } else {
        QSet<QString> members;
        for (const SignalItem &member : qAsConst(item.members))
            members.insert(member.name);
        const auto swallowed = [&members](const SignalItem &entry) {
            return entry.members.isEmpty() && members.contains(entry.name);
        };
        list.erase(std::remove_if(list.begin(), list.end(), swallowed), list.end());
    }
    list.append(item);
}

void Grouped(QList<SignalItem> all, QList<SignalItem> &buses, QList<SignalItem> &singles)
{
    for (const SignalItem &entry : qAsConst(all)) {
        QList<SignalItem> &group = entry.kind == SignalItem::Bus ? buses : singles;
        group.append(entry);
        removeDisabledMembers(&group.last());
    }
}
// NOLINTEND(performance-unnecessary-value-param)

QList<SignalItem> mergedSignals(const QList<SignalItem> &shown, const QList<SignalItem> &chosen)
{
    QList<SignalItem> buses;
    QList<SignalItem> singles;
    Grouped(chosen, buses, singles);
    SignalMerge merge(buses, singles);
    QList<SignalItem> merged;
    std::copy_if(shown.cbegin(), shown.cend(), std::back_inserter(merged),
                 [&merge](const SignalItem &item) { return !merge.covers(item); });
    return merged + merge.buses() + merge.singles();
}

} // namespace TARN
