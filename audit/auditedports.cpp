// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "auditedports.h"

#include <model/configsnapshot.h>
#include <model/portlimits.h>

#include <algorithm>
#include <tuple>

namespace TARN {

namespace {

bool isBefore(const Place &a, const Place &b)
{
    return std::tie(a.core, a.type, a.port, a.signal, a.bit) <
           std::tie(b.core, b.type, b.port, b.signal, b.bit);
}

/// Of all Probe Out ports, in bits.
int drivenWidth(const ConfigSnapshot &config)
{
    int width = 0;
    for (const ConfigSnapshot::Core &core : config.cores) {
        for (const auto &port : core.content->probeOuts)
            width += widthOf(port->signals);
    }
    return width;
}

} // namespace

Place AuditedPort::placeOf(BitPlace bit) const
{
    Place placed = place;
    placed.signal = bit.signal;
    placed.bit = bit.bit;
    return placed;
}

AuditedPorts::Spares::Spares(Ports former)
    : ports(std::move(former))
{
    for (std::size_t i = 0; i < ports.size(); ++i)
        positions[ports[i]->place.type].insert(ports[i]->snapshot.get(), int(i));
}

std::unique_ptr<AuditedPort> AuditedPorts::Spares::take(const PortSnapshot *snapshot,
                                                        ProbeType type)
{
    const auto known = positions[type].find(snapshot);
    if (known == positions[type].end())
        return nullptr;
    std::unique_ptr<AuditedPort> port = std::move(ports[std::size_t(*known)]);
    positions[type].erase(known);
    return port;
}

void AuditedPorts::setNames(const DesignNames *names)
{
    m_names = names;
    for (const std::unique_ptr<AuditedPort> &port : m_ports)
        look(port.get());
}

void AuditedPorts::update(const ConfigSnapshot &config)
{
    Spares spares(std::move(m_ports));
    m_ports.clear();
    if (spares.ports.empty())
        m_driven.reserve(drivenWidth(config));
    for (int core = 0; core < config.cores.size(); ++core) {
        const CoreSnapshot &content = *config.cores.at(core).content;
        addPorts(core, ProbeTypeIn, content.probeIns, &spares);
        addPorts(core, ProbeTypeOut, content.probeOuts, &spares);
    }
    drop(spares.ports);
    m_driven.settle();
}

void AuditedPorts::addPorts(int core, ProbeType type, const QVector<Snapshot> &snapshots,
                            Spares *spares)
{
    for (int position = 0; position < snapshots.size(); ++position) {
        const Snapshot &snapshot = snapshots.at(position);
        std::unique_ptr<AuditedPort> port = spares->take(snapshot.get(), type);
        if (!port)
            port = newPort(snapshot, type);
        port->place.core = core;
        port->place.port = position;
        m_ports.push_back(std::move(port));
    }
}

std::unique_ptr<AuditedPort> AuditedPorts::newPort(const Snapshot &snapshot, ProbeType type)
{
    auto port = std::make_unique<AuditedPort>();
    port->snapshot = snapshot;
    port->place.type = type;
    look(port.get());
    if (type == ProbeTypeOut) {
        port->driver = m_driven.add(snapshot->signals);
        if (std::size_t(port->driver) == m_drivers.size())
            m_drivers.push_back(nullptr);
        m_drivers[std::size_t(port->driver)] = port.get();
    }
    return port;
}

/// The last ports go first, which suits the table of driven bits.
void AuditedPorts::drop(const Ports &unused)
{
    for (auto port = unused.rbegin(); port != unused.rend(); ++port) {
        if (*port && (*port)->driver != -1)
            m_driven.remove((*port)->driver);
    }
}

void AuditedPorts::look(AuditedPort *port) const
{
    port->audit.run(*port->snapshot, port->place.type, m_names);
    if (!m_withNotes)
        port->audit.leaveNotesOut();
}

QVector<Place> AuditedPorts::severalPlaces(int i) const
{
    QVector<Place> places;
    for (const DrivenBits::Driver &driver : m_driven.drivers(i))
        places.append(m_drivers[std::size_t(driver.port)]->placeOf({driver.signal, driver.bit}));
    std::sort(places.begin(), places.end(), isBefore);
    return places;
}

} // namespace TARN
