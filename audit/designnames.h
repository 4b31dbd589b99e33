// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringView>
#include <QVector>

#include <vector>

namespace NETWEIR {
class RtlNet;
class RtlNetBus;
class RtlNetlist;
} // namespace NETWEIR

namespace TARN {

/// The full name of a bus without its range: "top/mem[3]" of "top/mem[3][7:0]". A name without a
/// range is its own base.
QStringView baseOfBusName(QStringView fullName);

/// The nets and buses of a design by name.
///
/// Owns nothing: the netlist must live longer. Made once for each netlist; the first search for a
/// bus makes an index of all buses, which takes about 0.2 us per bus, and the first search for a
/// net makes that of RtlNetlist::findNet().
class DesignNames
{
public:
    explicit DesignNames(NETWEIR::RtlNetlist *netlist);

    NETWEIR::RtlNetlist *netlist() const { return m_netlist; }

    /// The single net or bus bit with that full name; null when there is none.
    NETWEIR::RtlNet *net(const QString &fullName) const;

    /// The bus with that full name, range included; the first of several, null when there is none.
    NETWEIR::RtlNetBus *bus(const QString &fullName) const;

    /// All buses with that full name without the range, in the order of the netlist.
    QVector<NETWEIR::RtlNetBus *> busesOfBase(QStringView base) const;

private:
    void indexBuses() const;
    /// The first bus that may have that base.
    int firstOfBase(QStringView base) const;

    NETWEIR::RtlNetlist *m_netlist;

    // The index, made at the first need. Buses whose bases have the same hash are linked in their
    // order. A host may make the names anew at each call, so the index holds none.
    mutable bool m_indexed = false;
    mutable QList<NETWEIR::RtlNetBus *> m_buses;
    mutable QHash<uint, int> m_first; ///< Position of the first bus, by the hash of its base.
    mutable std::vector<int> m_next;  ///< Position of the next bus with that hash, or -1.
};

} // namespace TARN
