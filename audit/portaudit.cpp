// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "portaudit.h"

#include "signalfit.h"

#include <model/bitstring.h>
#include <model/configsnapshot.h>
#include <model/portlimits.h>
#include <model/signalbits.h>

#include <QHash>

#include <algorithm>
#include <tuple>

namespace TARN {

namespace {

/// One bit of a port, to be sorted so that bits with the same name come together.
struct NamedBit
{
    uint hash;
    int position; ///< In the port.
    const QString *name;
    BitPlace place;

    bool hasNameOf(const NamedBit &other) const
    {
        return hash == other.hash && *name == *other.name;
    }
};

/// Names are only compared when their hashes are equal.
bool operator<(const NamedBit &a, const NamedBit &b)
{
    if (a.hash != b.hash)
        return a.hash < b.hash;
    const int order = a.name->compare(*b.name);
    return order != 0 ? order < 0 : a.position < b.position;
}

std::vector<NamedBit> sortedBits(const QList<SignalItem> &items)
{
    std::vector<NamedBit> bits;
    forEachBit(items, [&bits](const QString &name, int signal, int bit) {
        bits.push_back({qHash(name), int(bits.size()), &name, {signal, bit}});
    });
    std::sort(bits.begin(), bits.end());
    return bits;
}

/// Whether two bits may have the same name. Hardly any port has them, and numbers are sorted in
/// less than half the time of bits.
bool mayRepeat(const QList<SignalItem> &items)
{
    std::vector<uint> hashes;
    forEachBit(items, [&hashes](const QString &name, int, int) { hashes.push_back(qHash(name)); });
    std::sort(hashes.begin(), hashes.end());
    return std::adjacent_find(hashes.cbegin(), hashes.cend()) != hashes.cend();
}

} // namespace

void PortAudit::run(const PortSnapshot &port, ProbeType type, const DesignNames *names)
{
    m_entries.clear();
    m_further.clear();
    checkPort(port, type);
    if (names)
        checkSignals(port, type, *names);
    checkRepeats(port);
}

void PortAudit::leaveNotesOut()
{
    m_entries.erase(
        std::remove_if(m_entries.begin(), m_entries.end(),
                       [](const Entry &entry) { return severityOf(entry.rule) == Severity::Note; }),
        m_entries.end());
}

void PortAudit::checkPort(const PortSnapshot &port, ProbeType type)
{
    if (type == ProbeTypeOut && significantBits(port.initialValue) > widthOf(port.signals))
        m_entries.push_back({Rule::ValueWidth, {}});
    if (port.signals.isEmpty())
        m_entries.push_back({Rule::EmptyPort, {}});
}

void PortAudit::checkSignals(const PortSnapshot &port, ProbeType type, const DesignNames &names)
{
    for (int signal = 0; signal < port.signals.size(); ++signal) {
        const SignalFit fit = fitOf(port.signals.at(signal), type, names);
        if (fit.missing)
            m_entries.push_back({Rule::NetMissing, {signal}});
        if (fit.changed)
            m_entries.push_back({Rule::BusChanged, {signal}});
        if (fit.unusable > 0)
            m_entries.push_back({Rule::NotUsable, {signal, fit.firstUnusable}});
    }
}

void PortAudit::checkRepeats(const PortSnapshot &port)
{
    if (!mayRepeat(port.signals))
        return;
    const std::vector<NamedBit> bits = sortedBits(port.signals);
    const std::size_t known = m_entries.size();
    for (auto first = bits.begin(); first != bits.end();) {
        const auto end = std::find_if(
            first, bits.end(), [first](const NamedBit &bit) { return !bit.hasNameOf(*first); });
        if (end - first > 1)
            m_entries.push_back(
                {Rule::Repeated, first->place, int(m_further.size()), int(end - first) - 1});
        while (++first != end)
            m_further.push_back(first->place);
    }
    if (m_entries.size() == known)
        return;
    std::sort(m_entries.begin(), m_entries.end(), [](const Entry &a, const Entry &b) {
        return std::tie(a.place.signal, a.rule, a.place.bit) <
               std::tie(b.place.signal, b.rule, b.place.bit);
    });
}

int significantBits(const QString &initialValue)
{
    const QString bits = stringHextoBinfor0x(initialValue);
    const int first = bits.indexOf(QLatin1Char('1'));
    return first == -1 ? 0 : bits.size() - first;
}

} // namespace TARN
