// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "netdrivers.h"

#include "signaltables.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/ground/readguard.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace NETWEIR::Internal {

namespace {

constexpr std::size_t FirstSlots = 1024; ///< A power of two.

} // namespace

NetDrivers::NetDrivers()
    : m_slots(FirstSlots)
{
}

int NetDrivers::add(quint64 pointer)
{
    Slot *slot = &m_slots[slotOf(pointer)];
    if (slot->pointer == pointer)
        return int(slot->net);
    if (m_drivers.size() >= m_slots.size() / 2) {
        grow();
        slot = &m_slots[slotOf(pointer)];
    }
    const int net = size();
    *slot = {pointer, quint32(net)};
    m_drivers.push_back(0);
    m_sources.push_back(net);
    return net;
}

int NetDrivers::add(const TableLine &line)
{
    constexpr int Most = std::numeric_limits<quint8>::max();
    const int net = add(line.pointer);
    const int drivers = std::min(driversOf(net) + std::min(line.drivers, Most), Most);
    itemAt(m_drivers, net) = quint8(drivers);
    if (line.isConversion)
        addDriver(net);
    if (line.source != 0) {
        const int source = add(line.source);
        itemAt(m_sources, net) = source;
    }
    return net;
}

void NetDrivers::addDriver(int net)
{
    quint8 &drivers = itemAt(m_drivers, net);
    drivers = std::max<quint8>(drivers, 1);
}

bool NetDrivers::complete()
{
    std::vector<int> passed;
    for (int net = 0; net < size(); ++net) {
        ReadGuard::check();
        passed.clear();
        int end = net;
        while (sourceOf(end) != end) {
            passed.push_back(end);
            end = sourceOf(end);
            if (countOf(passed) > size())
                return false;
        }
        for (const int before : passed)
            itemAt(m_sources, before) = end;
    }
    return true;
}

int NetDrivers::size() const
{
    return countOf(m_drivers);
}

int NetDrivers::driversOf(int net) const
{
    return itemAt(m_drivers, net);
}

int NetDrivers::sourceOf(int net) const
{
    return itemAt(m_sources, net);
}

/// The slot with the pointer, or the free one where it belongs.
std::size_t NetDrivers::slotOf(quint64 pointer) const
{
    constexpr quint64 Spread = 0x9E3779B97F4A7C15U;
    const std::size_t mask = m_slots.size() - 1;
    std::size_t slot = std::size_t((pointer * Spread) >> 32) & mask;
    while (m_slots[slot].pointer != 0 && m_slots[slot].pointer != pointer)
        slot = (slot + 1) & mask;
    return slot;
}

void NetDrivers::grow()
{
    std::vector<Slot> former(m_slots.size() * 2);
    ReadGuard::check(qint64(former.size()));
    std::swap(former, m_slots);
    for (const Slot &slot : former) {
        if (slot.pointer != 0)
            m_slots[slotOf(slot.pointer)] = slot;
    }
}

} // namespace NETWEIR::Internal
