// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "incomingsignals.h"

#include <algorithm>
#include <numeric>

namespace TARN {

namespace {

int memberCount(const QList<SignalItem> &items)
{
    return std::accumulate(items.cbegin(), items.cend(), 0, [](int sum, const SignalItem &item) {
        return sum + item.members.size();
    });
}

} // namespace

IncomingSignals::Positions::Positions(int count)
{
    m_chains.reserve(count);
    m_links.reserve(static_cast<std::size_t>(count));
}

void IncomingSignals::Positions::add(const QString &name, int position)
{
    const int link = static_cast<int>(m_links.size());
    m_links.push_back({position, End});
    Chain &chain = m_chains[name];
    (chain.first == End ? chain.first : linkAt(chain.last).next) = link;
    chain.last = link;
}

int IncomingSignals::Positions::first(const QString &name, const std::vector<bool> &struck)
{
    const auto it = m_chains.find(name);
    if (it == m_chains.end())
        return -1;
    int &first = it.value().first;
    while (first != End && struck[static_cast<std::size_t>(linkAt(first).position)])
        first = linkAt(first).next;
    return first == End ? -1 : linkAt(first).position;
}

IncomingSignals::IncomingSignals(const QList<SignalItem> &items)
    : m_items(items)
    , m_struck(static_cast<std::size_t>(items.size()))
    , m_byName(items.size())
    , m_byMember(memberCount(items))
{
    for (int i = 0; i < items.size(); ++i) {
        const SignalItem &item = items.at(i);
        m_byName.add(item.name, i);
        for (const SignalItem &member : item.members)
            m_byMember.add(member.name, i);
    }
}

void IncomingSignals::strikeFirst(const QString &name)
{
    strike(firstNamed(name));
}

bool IncomingSignals::reconcile(const SignalItem &shown)
{
    if (shown.members.isEmpty())
        return reconcileSingle(shown);
    reconcileBus(shown);
    return false;
}

bool IncomingSignals::reconcileSingle(const SignalItem &shown)
{
    const int same = firstNamed(shown.name);
    const int covering = m_byMember.first(shown.name, m_struck);
    // Whichever comes first in the list decides.
    if (covering != -1 && (same == -1 || covering < same))
        return true;
    strike(same);
    return false;
}

void IncomingSignals::reconcileBus(const SignalItem &shown)
{
    const int same = firstNamed(shown.name);
    for (const SignalItem &member : shown.members) {
        int covered = firstNamed(member.name);
        // The walk ends at the bus itself: members behind it stay.
        while (covered != -1 && (same == -1 || covered < same)) {
            strike(covered);
            covered = firstNamed(member.name);
        }
    }
    strike(same);
}

QList<SignalItem> IncomingSignals::left() const
{
    if (std::find(m_struck.cbegin(), m_struck.cend(), true) == m_struck.cend())
        return m_items;
    QList<SignalItem> items;
    for (int i = 0; i < m_items.size(); ++i) {
        if (!m_struck[static_cast<std::size_t>(i)])
            items.append(m_items.at(i));
    }
    return items;
}

void IncomingSignals::strike(int position)
{
    if (position != -1)
        m_struck[static_cast<std::size_t>(position)] = true;
}

SignalMerge::SignalMerge(const QList<SignalItem> &buses, const QList<SignalItem> &singles)
    : m_buses(buses)
    , m_singles(singles)
{
}

bool SignalMerge::covers(const SignalItem &shown)
{
    // A single net that is shown is looked for among the singles only: it stays even when an
    // incoming bus covers it. Users have both in their files.
    if (shown.kind != SignalItem::Net)
        return m_buses.reconcile(shown);
    m_singles.strikeFirst(shown.name);
    return false;
}

} // namespace TARN
