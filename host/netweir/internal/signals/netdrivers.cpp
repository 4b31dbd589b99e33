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

constexpr quint64 Spread = 0x9E3779B97F4A7C15U;

/// Pointers that are close to each other have hashes that are.
quint64 hashOf(quint64 pointer)
{
    constexpr int Alignment = 4; // As a power of two.
    constexpr int Region = 20;
    const quint64 place = pointer >> Alignment;
    return place + (((place >> Region) * Spread) >> 32);
}

} // namespace

NetDrivers::NetDrivers()
    : m_slots(FirstSlots)
{
}

int NetDrivers::add(quint64 pointer)
{
    std::size_t slot = slotOf(pointer);
    if (m_slots[slot] != 0)
        return int(m_slots[slot] - 1);
    if (m_drivers.size() >= m_slots.size() / 2) {
        grow();
        slot = slotOf(pointer);
    }
    const int net = size();
    m_slots[slot] = quint32(net) + 1;
    m_pointers.push_back(pointer);
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

void NetDrivers::forgetPointers()
{
    m_slots = std::vector<quint32>();
    m_pointers = std::vector<quint64>();
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

/// The slot with the pointer, or the free one where it belongs. Where many pointers are too close,
/// it is far from those.
std::size_t NetDrivers::slotOf(quint64 pointer) const
{
    constexpr int MostNeighbours = 8;
    const std::size_t mask = m_slots.size() - 1;
    const std::size_t leap = std::size_t((pointer * Spread) >> 32) | 1U; // Odd: reaches all slots.
    std::size_t slot = std::size_t(hashOf(pointer)) & mask;
    for (int i = 0; m_slots[slot] != 0 && m_pointers[m_slots[slot] - 1] != pointer; ++i)
        slot = (slot + (i < MostNeighbours ? 1U : leap)) & mask;
    return slot;
}

void NetDrivers::grow()
{
    ReadGuard::check(qint64(m_slots.size()));
    m_slots.assign(m_slots.size() * 2, 0);
    for (std::size_t net = 0; net < m_pointers.size(); ++net)
        m_slots[slotOf(m_pointers[net])] = quint32(net) + 1;
}

} // namespace NETWEIR::Internal
