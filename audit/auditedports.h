// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "portaudit.h"

#include <model/drivenbits.h>

#include <QMultiHash>
#include <QVector>

#include <memory>
#include <vector>

namespace TARN {

struct ConfigSnapshot;

/// One port of a configuration, with its findings.
struct AuditedPort
{
    Place placeOf(BitPlace bit) const;

    std::shared_ptr<const PortSnapshot> snapshot;
    Place place; ///< Of the whole port.
    PortAudit audit;
    int driver = -1; ///< Its number among the driven bits; -1 for a Probe In port.
};

/// The ports of a configuration that changes. A port that is the same object as before keeps its
/// findings, also at another place.
class AuditedPorts
{
public:
    explicit AuditedPorts(bool withNotes)
        : m_withNotes(withNotes)
    {
    }

    /// Looks at every port again. @p names may be null, and must live until they are replaced.
    void setNames(const DesignNames *names);

    /// Takes over the ports of @p config and looks at the new ones.
    void update(const ConfigSnapshot &config);

    /// Core by core, first the Probe In ports, then the Probe Out ports.
    const std::vector<std::unique_ptr<AuditedPort>> &ports() const { return m_ports; }

    // The bits with several drivers, sorted by name.
    int severalCount() const { return m_driven.severalCount(); }
    const QString &severalName(int i) const { return m_driven.name(i); }
    /// All drivers, at least two, in the order of their places.
    QVector<Place> severalPlaces(int i) const;

private:
    using Snapshot = std::shared_ptr<const PortSnapshot>;
    using Ports = std::vector<std::unique_ptr<AuditedPort>>;

    /// The ports so far, to be used again. An object may be at several places.
    struct Spares
    {
        explicit Spares(Ports former);
        std::unique_ptr<AuditedPort> take(const PortSnapshot *snapshot, ProbeType type);

        Ports ports; ///< Null where taken.
        QMultiHash<const PortSnapshot *, int> positions[2];
    };

    void addPorts(int core, ProbeType type, const QVector<Snapshot> &snapshots, Spares *spares);
    std::unique_ptr<AuditedPort> newPort(const Snapshot &snapshot, ProbeType type);
    void drop(const Ports &unused);
    void look(AuditedPort *port) const;

    bool m_withNotes;
    const DesignNames *m_names = nullptr;
    Ports m_ports;
    DrivenBits m_driven;
    std::vector<const AuditedPort *> m_drivers; ///< By their numbers in m_driven.
};

} // namespace TARN
