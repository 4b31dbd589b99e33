// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designnames.h"

#include <sdk/netweir.h>

namespace TARN {

namespace {

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

/// The position in front of the number that ends at @p end, or @p end when there is none.
int startOfNumber(QStringView text, int end)
{
    int start = end;
    while (start > 0 && isDigit(text[start - 1]))
        --start;
    if (start < end && start > 0 && text[start - 1] == QLatin1Char('-'))
        --start;
    return start;
}

} // namespace

QStringView baseOfBusName(QStringView fullName)
{
    const int close = int(fullName.size()) - 1;
    if (close < 0 || fullName[close] != QLatin1Char(']'))
        return fullName;
    const int right = startOfNumber(fullName, close);
    if (right == close || right == 0 || fullName[right - 1] != QLatin1Char(':'))
        return fullName;
    const int left = startOfNumber(fullName, right - 1);
    if (left == right - 1 || left == 0 || fullName[left - 1] != QLatin1Char('['))
        return fullName;
    return fullName.left(left - 1);
}

DesignNames::DesignNames(NETWEIR::RtlNetlist *netlist)
    : m_netlist(netlist)
{
}

NETWEIR::RtlNet *DesignNames::net(const QString &fullName) const
{
    return m_netlist->findNet(fullName);
}

NETWEIR::RtlNetBus *DesignNames::bus(const QString &fullName) const
{
    for (int i = firstOfBase(baseOfBusName(fullName)); i != -1; i = m_next.at(std::size_t(i))) {
        if (m_buses.at(i)->fullBusName() == fullName)
            return m_buses.at(i);
    }
    return nullptr;
}

QVector<NETWEIR::RtlNetBus *> DesignNames::busesOfBase(QStringView base) const
{
    QVector<NETWEIR::RtlNetBus *> buses;
    for (int i = firstOfBase(base); i != -1; i = m_next.at(std::size_t(i))) {
        const QString name = m_buses.at(i)->fullBusName();
        if (baseOfBusName(name) == base)
            buses.append(m_buses.at(i));
    }
    return buses;
}

int DesignNames::firstOfBase(QStringView base) const
{
    if (!m_indexed)
        indexBuses();
    return m_first.value(qHash(base), -1);
}

void DesignNames::indexBuses() const
{
    m_indexed = true;
    m_buses = m_netlist->top()->netbusesIncludeSub();
    m_first.reserve(m_buses.size());
    m_next.assign(std::size_t(m_buses.size()), -1);
    // From the last to the first, so that each hash ends with its first bus.
    for (int i = m_buses.size() - 1; i >= 0; --i) {
        const QString name = m_buses.at(i)->fullBusName();
        const uint hash = qHash(baseOfBusName(name));
        const auto known = m_first.find(hash);
        if (known == m_first.end()) {
            m_first.insert(hash, i);
        } else {
            m_next.at(std::size_t(i)) = *known;
            *known = i;
        }
    }
}

} // namespace TARN
