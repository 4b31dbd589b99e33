// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "drivenbits.h"

#include "signalbits.h"

#include <algorithm>

namespace TARN {

namespace {

int takeLast(std::vector<int> *numbers)
{
    const int number = numbers->back();
    numbers->pop_back();
    return number;
}

} // namespace

void DrivenBits::reserve(int bits)
{
    // Some room for edits, which add the new bits before the old ones go.
    bits += bits / 8;
    // QHash would shrink otherwise.
    if (bits <= m_ids.capacity())
        return;
    m_ids.reserve(bits);
    m_bits.reserve(std::size_t(bits));
}

int DrivenBits::add(const QList<SignalItem> &items)
{
    if (m_freePorts.empty()) {
        m_freePorts.push_back(int(m_ports.size()));
        m_ports.emplace_back();
    }
    const int port = takeLast(&m_freePorts);
    Ids &ids = m_ports[std::size_t(port)];
    forEachBit(items, [&](const QString &name, int signal, int position) {
        const int id = idOf(name);
        Drivers &drivers = bit(id).drivers;
        if (drivers.empty() || drivers.back().port != port)
            ids.push_back(id);
        drivers.push_back({port, signal, position});
        touch(id);
    });
    return port;
}

void DrivenBits::remove(int port)
{
    const auto isOther = [port](const Driver &driver) { return driver.port != port; };
    const auto isOfPort = [port](const Driver &driver) { return driver.port == port; };
    Ids &ids = m_ports[std::size_t(port)];
    for (const int id : ids) {
        // From the back, where the drivers are that came last.
        Drivers &drivers = bit(id).drivers;
        const auto last = std::find_if(drivers.rbegin(), drivers.rend(), isOfPort);
        const auto first = std::find_if(last, drivers.rend(), isOther);
        drivers.erase(first.base(), last.base());
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
        const bool several = touched.drivers.size() > 1;
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
        if (bit(id).drivers.empty())
            forget(id);
    }
    m_touched.clear();
}

int DrivenBits::idOf(const QString &name)
{
    // A new entry is 0, so the numbers in the table begin with 1.
    int &entry = m_ids[name];
    if (entry != 0)
        return entry - 1;
    if (m_freeBits.empty()) {
        m_freeBits.push_back(int(m_bits.size()));
        m_bits.emplace_back();
    }
    const int id = takeLast(&m_freeBits);
    bit(id).name = name;
    entry = id + 1;
    return id;
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
    Bit &forgotten = bit(id);
    m_ids.remove(forgotten.name);
    forgotten = Bit();
    m_freeBits.push_back(id);
}

} // namespace TARN
