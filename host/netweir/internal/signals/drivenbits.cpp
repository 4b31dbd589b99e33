// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "drivenbits.h"

#include "vhdlpartcontent.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/ground/readguard.h>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

bool isInput(WaveSignal::Mode mode)
{
    return mode == WaveSignal::In || mode == WaveSignal::Inout || mode == WaveSignal::Linkage;
}

} // namespace

DrivenBits::DrivenBits(const VhdlPartContent &content, int root, const DrivenPorts &driven)
    : m_content(content)
{
    const VhdlPartContent::Root &start = itemAt(content.roots, root);
    addRange(start.scope);
    const WaveScope &scope = content.scopeAt(start.scope);
    for (int i = scope.firstSignal; i < scope.endSignal; ++i) {
        const WaveSignal &port = content.signalAt(i);
        const auto bits = driven.constFind(itemAt(content.names, i));
        if (!isInput(port.mode))
            continue;
        if (start.isTop)
            addPort(port, nullptr);
        else if (bits != driven.constEnd())
            addPort(port, &*bits);
    }
}

bool DrivenBits::isDriven(qint64 scalar) const
{
    const int net = itemAt(m_content.design->nets, scalar);
    const NetDrivers &drivers = m_content.design->drivers;
    return drivers.isDriven(net) || isDrivenFromOutside(net) ||
           isDrivenFromOutside(drivers.sourceOf(net));
}

DrivenPorts DrivenBits::portsOf(int scope) const
{
    DrivenPorts ports;
    const WaveScope &instance = m_content.scopeAt(scope);
    for (int i = instance.firstSignal; i < instance.endSignal; ++i) {
        const WaveSignal &port = m_content.signalAt(i);
        if (!isInput(port.mode))
            continue;
        std::vector<bool> &bits = ports[itemAt(m_content.names, i)];
        qint64 scalar = port.firstScalar;
        forEachScalar(m_content.design->header.types(), port.type, [&](qint64 width) {
            ReadGuard::check();
            const bool driven =
                port.mode == WaveSignal::Inout ? isDrivenByOthers(scalar) : isDriven(scalar);
            bits.insert(bits.end(), std::size_t(width), driven);
            ++scalar;
        });
    }
    return ports;
}

/// Nets are numbered in the order of the scopes, so those below a root lie close together.
void DrivenBits::addRange(int scope)
{
    const std::vector<int> &nets = m_content.design->nets;
    const std::vector<WaveSignal> &signalList = m_content.design->header.signalList();
    const int end = m_content.scopeAt(scope).end;
    const int afterLast = itemAt(m_content.design->header.scopes(), end - 1).endSignal;
    const int first = m_content.scopeAt(scope).firstSignal;
    if (first >= afterLast)
        return;
    const WaveSignal &last = itemAt(signalList, afterLast - 1);
    const qint64 endScalar = last.firstScalar + m_content.typeOf(last).scalars;
    const qint64 firstScalar = itemAt(signalList, first).firstScalar;
    if (firstScalar >= endScalar)
        return;
    const auto range = std::minmax_element(nets.begin() + firstScalar, nets.begin() + endScalar);
    m_firstNet = *range.first;
    m_isDrivenOutside.assign(std::size_t(*range.second - m_firstNet) + 1, false);
}

/// Without @p driven all bits are driven. A scalar is if one of its bits is.
void DrivenBits::addPort(const WaveSignal &port, const std::vector<bool> *driven)
{
    qint64 scalar = port.firstScalar;
    std::size_t bit = 0;
    forEachScalar(m_content.design->header.types(), port.type, [&](qint64 width) {
        ReadGuard::check();
        bool isDriven = !driven;
        for (qint64 i = 0; i < width && driven && bit < driven->size(); ++i, ++bit)
            isDriven = isDriven || (*driven)[bit];
        if (isDriven) {
            const int net = itemAt(m_content.design->nets, scalar);
            m_isDrivenOutside[std::size_t(net - m_firstNet)] = true;
        }
        ++scalar;
    });
}

bool DrivenBits::isDrivenFromOutside(int net) const
{
    const qint64 index = qint64(net) - m_firstNet;
    return index >= 0 && index < qint64(m_isDrivenOutside.size()) &&
           m_isDrivenOutside[std::size_t(index)];
}

/// The stub in place of a foreign unit is one of the drivers, or one of the driving ports of the
/// net outside.
bool DrivenBits::isDrivenByOthers(qint64 scalar) const
{
    const int net = itemAt(m_content.design->nets, scalar);
    const NetDrivers &drivers = m_content.design->drivers;
    const int source = drivers.sourceOf(net);
    return drivers.driversOf(source) > 1 || isDrivenFromOutside(source);
}

} // namespace NETWEIR::Internal
