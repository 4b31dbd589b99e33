// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <probes/signalitem.h>

#include <QHash>
#include <QVarLengthArray>

#include <vector>

namespace TARN {

/// The bits that Probe Out ports drive, by name, to find those with several drivers. A bit that
/// occurs twice in one port has two drivers.
///
/// Adding and removing a port takes time linear in its bits and in what else drives them; the first
/// settle() takes n log n in the bits with several drivers, later ones n, in the tens of
/// nanoseconds.
class DrivenBits
{
public:
    struct Driver
    {
        int port; ///< The number that add() returned.
        int signal;
        int bit; ///< Position in the members of a bus, -1 for a single net.
    };

    /// Nearly all bits have one driver, which needs no memory of its own.
    using Drivers = QVarLengthArray<Driver, 2>;

    /// Prepares for so many different bits, which saves time when all ports are added.
    void reserve(int bits);

    /// Adds a port with the signals @p items. Returns its number: 0, 1, ...; numbers of removed
    /// ports are used again.
    int add(const QList<SignalItem> &items);

    /// Removes the port with that number. Of many ports, those added last should go first.
    void remove(int port);

    /// Makes the list of the bits with several drivers, sorted by name, by UTF-16 code units.
    void settle();

    // The list as of the last settle().
    int severalCount() const { return int(m_several.size()); }
    const QString &name(int i) const { return bit(several(i)).name; }
    /// The drivers of one port are together and in its order.
    const Drivers &drivers(int i) const { return bit(several(i)).drivers; }

private:
    using Ids = std::vector<int>;

    struct Bit
    {
        QString name;
        Drivers drivers;
        bool touched = false; ///< Drivers came or went since the last settle().
        bool listed = false;
    };

    const Bit &bit(int id) const { return m_bits[std::size_t(id)]; }
    Bit &bit(int id) { return m_bits[std::size_t(id)]; }
    int several(int i) const { return m_several[std::size_t(i)]; }
    int idOf(const QString &name);
    void touch(int id);
    void enter(Ids ids);
    void forget(int id);

    std::vector<Bit> m_bits;
    Ids m_freeBits;
    QHash<QString, int> m_ids; ///< By name, the position in m_bits plus one.
    std::vector<Ids> m_ports;  ///< By number, the different bits of a port.
    Ids m_freePorts;
    Ids m_touched;
    Ids m_several;
};

} // namespace TARN
