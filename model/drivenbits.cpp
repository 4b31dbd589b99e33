// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "drivenbits.h"

#include "signalbits.h"

#include <QtMath>

#include <algorithm>

namespace TARN {

namespace {

int takeLast(std::vector<int> *numbers)
{
    const int number = numbers->back();
    numbers->pop_back();
    return number;
}

/// The number of an element of @p list that is not in use.
template <typename Element>
int newNumber(std::vector<Element> *list, std::vector<int> *free)
{
    if (!free->empty())
        return takeLast(free);
    list->emplace_back();
    return int(list->size()) - 1;
}

} // namespace

void DrivenBits::Table::reserve(std::size_t bits)
{
    if (bits * 4 <= m_places.size() * 3)
        return;
    std::vector<Place> former(qNextPowerOfTwo(quint32(bits + bits / 3)));
    former.swap(m_places);
    m_count = 0;
    for (const Place &place : former) {
        if (place.id != None)
            fill(find(place.hash, [](int) { return false; }), place.hash, place.id);
    }
}

std::size_t DrivenBits::Table::wanted(uint hash) const
{
    // The hashes of names that are numbered lie close together.
    constexpr quint32 golden = 0x9e3779b9;
    return (quint64(hash * golden) * m_places.size()) >> 32;
}

template <typename IsWanted>
std::size_t DrivenBits::Table::find(uint hash, IsWanted isWanted) const
{
    std::size_t place = wanted(hash);
    while (idAt(place) != None && !(m_places[place].hash == hash && isWanted(idAt(place))))
        place = within(place + 1);
    return place;
}

void DrivenBits::Table::fill(std::size_t gap, uint hash, int id)
{
    m_places[gap] = {hash, id};
    ++m_count;
}

void DrivenBits::Table::remove(std::size_t place)
{
    // Those behind that would not be found over the gap move up.
    for (std::size_t at = within(place + 1); idAt(at) != None; at = within(at + 1)) {
        if (within(at - wanted(m_places[at].hash)) >= within(at - place)) {
            m_places[place] = m_places[at];
            place = at;
        }
    }
    m_places[place] = {};
    --m_count;
}

void DrivenBits::reserve(int bits)
{
    // Some room for edits, which add the new bits before the old ones go.
    const auto count = std::size_t(bits + bits / 8);
    m_table.reserve(count);
    m_bits.reserve(count);
}

int DrivenBits::add(const QList<SignalItem> &items)
{
    const int port = newNumber(&m_ports, &m_freePorts);
    Ids &ids = m_ports[std::size_t(port)];
    forEachBit(items, [&](const QString &name, int signal, int position) {
        const int id = idOf(name);
        if (lastPort(bit(id)) != port)
            ids.push_back(id);
        addDriver({port, signal, position}, &bit(id));
        touch(id);
    });
    return port;
}

void DrivenBits::remove(int port)
{
    Ids &ids = m_ports[std::size_t(port)];
    for (const int id : ids) {
        removeDrivers(port, &bit(id));
        touch(id);
    }
    Ids().swap(ids);
    m_freePorts.push_back(port);
}

void DrivenBits::settle()
{
    Ids entering;
    bool leaving = false;
    for (const int id : m_touched) {
        Bit &touched = bit(id);
        const bool several = driverCount(touched) > 1;
        if (several && !touched.listed)
            entering.push_back(id);
        leaving |= touched.listed && !several;
        touched.listed = several;
        touched.touched = false;
    }
    if (leaving)
        m_several.erase(std::remove_if(m_several.begin(), m_several.end(),
                                       [this](int id) { return !bit(id).listed; }),
                        m_several.end());
    enter(std::move(entering));
    for (const int id : m_touched) {
        if (!bit(id).listed)
            dropList(&bit(id));
        if (driverCount(bit(id)) == 0)
            forget(id);
    }
    Ids().swap(m_touched); // Long after the first time.
}

/// Its place in the table, or the gap for it.
std::size_t DrivenBits::placeOf(const QString &name, uint hash) const
{
    return m_table.find(hash, [&](int id) { return bit(id).name == name; });
}

int DrivenBits::idOf(const QString &name)
{
    m_table.reserve(m_table.count() + 1);
    const uint hash = qHash(name);
    const std::size_t place = placeOf(name, hash);
    if (m_table.idAt(place) != None)
        return m_table.idAt(place);
    const int id = newNumber(&m_bits, &m_freeBits);
    bit(id).name = name;
    m_table.fill(place, hash, id);
    return id;
}

// The drivers of a bit

int DrivenBits::driverCount(const Bit &bit) const
{
    if (bit.list)
        return m_drivers[bit.list].size();
    return bit.driver.port != None ? 1 : 0;
}

/// The port of the driver that was added last, None when there is no driver.
int DrivenBits::lastPort(const Bit &bit) const
{
    if (bit.list && driverCount(bit) > 0)
        return m_drivers[bit.list].last().port;
    return bit.driver.port;
}

void DrivenBits::addDriver(const Driver &driver, Bit *bit)
{
    if (!bit->list && bit->driver.port == None) {
        bit->driver = driver;
        return;
    }
    if (!bit->list) {
        bit->list = uint(newNumber(&m_drivers, &m_freeLists));
        m_drivers[bit->list].append(bit->driver);
        bit->driver.port = None;
    }
    m_drivers[bit->list].append(driver);
}

void DrivenBits::removeDrivers(int port, Bit *bit)
{
    if (!bit->list) {
        bit->driver.port = None;
        return;
    }
    const auto isOther = [port](const Driver &driver) { return driver.port != port; };
    const auto isOfPort = [port](const Driver &driver) { return driver.port == port; };
    // From the back, where the drivers are that came last.
    Drivers &drivers = m_drivers[bit->list];
    const auto last = std::find_if(drivers.rbegin(), drivers.rend(), isOfPort);
    const auto first = std::find_if(last, drivers.rend(), isOther);
    drivers.erase(first.base(), last.base());
}

/// For a bit with one driver or none.
void DrivenBits::dropList(Bit *bit)
{
    if (!bit->list)
        return;
    Drivers &drivers = m_drivers[bit->list];
    if (!drivers.isEmpty())
        bit->driver = drivers.first();
    drivers = Drivers();
    m_freeLists.push_back(int(bit->list));
    bit->list = 0;
}

void DrivenBits::touch(int id)
{
    if (bit(id).touched)
        return;
    bit(id).touched = true;
    m_touched.push_back(id);
}

/// Puts @p ids into the list at their places. Names are compared only n log m times for n new names
/// among m.
void DrivenBits::enter(Ids ids)
{
    if (ids.empty())
        return;
    const auto isLess = [this](int a, int b) { return bit(a).name < bit(b).name; };
    std::sort(ids.begin(), ids.end(), isLess);
    Ids merged;
    merged.reserve(m_several.size() + ids.size());
    auto rest = m_several.cbegin();
    for (const int id : ids) {
        const auto place = std::lower_bound(rest, m_several.cend(), id, isLess);
        merged.insert(merged.end(), rest, place);
        merged.push_back(id);
        rest = place;
    }
    merged.insert(merged.end(), rest, m_several.cend());
    m_several.swap(merged);
}

void DrivenBits::forget(int id)
{
    const QString &name = bit(id).name;
    m_table.remove(placeOf(name, qHash(name)));
    bit(id) = Bit();
    m_freeBits.push_back(id);
}

} // namespace TARN
