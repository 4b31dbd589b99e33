// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <vector>

namespace NETWEIR::Internal {

struct TableLine;

/// What drives the nets of a design. A net has a pointer in the tables of GHDL and a number here, 0
/// for the first one that is added.
///
/// Takes some 25 bytes per net, and 5 without the pointers. A look-up takes constant time; GHDL's
/// pointers rise with the nets, so most look-ups are close to the one before.
class NetDrivers
{
public:
    NetDrivers();

    /// The number of the net with this pointer, which is not 0; a new one when it is not known.
    int add(quint64 pointer);

    /// Notes what the table says about a net, and returns its number.
    int add(const TableLine &line);

    /// Notes a driver that no table shows.
    void addDriver(int net);

    /// Call after the last line. False when nets get their values from each other in a circle.
    bool complete();

    /// Gives back the memory for pointers. No net can be added afterwards.
    void forgetPointers();

    int size() const;
    /// Drivers and driving ports of the net itself; large numbers are cut.
    int driversOf(int net) const;
    /// The net from which an input gets its value, at last; the net itself if there is none.
    int sourceOf(int net) const;
    /// The net or its source has drivers.
    bool isDriven(int net) const { return driversOf(net) > 0 || driversOf(sourceOf(net)) > 0; }

private:
    std::size_t slotOf(quint64 pointer) const;
    void grow();

    std::vector<quint32> m_slots;    ///< Numbers plus one; open addressing, at most half full.
    std::vector<quint64> m_pointers; ///< By number.
    std::vector<quint8> m_drivers;
    std::vector<int> m_sources;
};

} // namespace NETWEIR::Internal
