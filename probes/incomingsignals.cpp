// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "incomingsignals.h"

#include <QHashFunctions>
#include <QtMath>

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
    m_links.reserve(static_cast<std::size_t>(count));
    m_heads.resize(qNextPowerOfTwo(static_cast<quint32>(count) * 2), End);
}

int &IncomingSignals::Positions::headOf(const QString &name, uint hash)
{
    // The hashes of names that are numbered lie close together.
    constexpr uint Spread = 0x9E3779B9;
    std::size_t place = (quint64(hash * Spread) * m_heads.size()) >> 32;
    const std::size_t mask = m_heads.size() - 1;
    while (m_heads[place] != End) {
        const Link &link = linkAt(m_heads[place]);
        if (link.hash == hash && *link.name == name)
            break;
        place = (place + 1) & mask;
    }
    return m_heads[place];
}

void IncomingSignals::Positions::addBefore(const QString &name, int position)
{
    const uint hash = qHash(name);
    int &head = headOf(name, hash);
    m_links.push_back({&name, hash, position, head});
    head = static_cast<int>(m_links.size()) - 1;
}

int IncomingSignals::Positions::first(const QString &name, const std::vector<bool> &struck)
{
    int &head = headOf(name, qHash(name));
    if (head == End)
        return -1;
    const auto isStruck = [&] { return struck[static_cast<std::size_t>(linkAt(head).position)]; };
    while (isStruck() && linkAt(head).next != End)
        head = linkAt(head).next;
    return isStruck() ? -1 : linkAt(head).position;
}

IncomingSignals::IncomingSignals(const QList<SignalItem> &items)
    : m_items(items)
    , m_struck(static_cast<std::size_t>(items.size()))
{
}

int IncomingSignals::firstNamed(const QString &name)
{
    if (!m_byName) {
        m_byName.emplace(m_items.size());
        for (int i = m_items.size() - 1; i >= 0; --i)
            m_byName->addBefore(m_items.at(i).name, i);
    }
    return m_byName->first(name, m_struck);
}

int IncomingSignals::firstWithMember(const QString &name)
{
    if (!m_byMember) {
        m_byMember.emplace(memberCount(m_items));
        for (int i = m_items.size() - 1; i >= 0; --i) {
            for (const SignalItem &member : m_items.at(i).members)
                m_byMember->addBefore(member.name, i);
        }
    }
    return m_byMember->first(name, m_struck);
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
    const int covering = firstWithMember(shown.name);
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
