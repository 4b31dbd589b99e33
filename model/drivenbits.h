// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <probes/signalitem.h>

#include <QVarLengthArray>

#include <vector>

namespace TARN {

/// The bits that Probe Out ports drive, by name, to find those with several drivers. A bit that
/// occurs twice in one port has two drivers.
///
/// Adding and removing a port takes time linear in its bits and in what else drives them; the first
/// settle() takes n log n in the bits with several drivers, later ones n, in the tens of
/// nanoseconds. A bit with one driver takes about 50 bytes; it shares the memory of its name.
class DrivenBits
{
public:
    struct Driver
    {
        int port; ///< The number that add() returned.
        int signal;
        int bit; ///< Position in the members of a bus, -1 for a single net.
    };

    /// Few bits have more than two drivers.
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
    const Drivers &drivers(int i) const { return m_drivers[bit(several(i)).list]; }

private:
    using Ids = std::vector<int>;

    static constexpr int None = -1;

    struct Bit
    {
        QString name;
        Driver driver{None, None, None}; ///< The only one. Port None when there is none or a list.
        uint list : 30;                  ///< Position in m_drivers; 0, which is never used: none.
        uint touched : 1;                ///< Drivers came or went since the last settle().
        uint listed : 1;

        Bit()
            : list(0)
            , touched(0)
            , listed(0)
        {
        }
    };

    /// The bits by their names. A bit stands where its hash says or in one of the places behind,
    /// without a gap between.
    class Table
    {
    public:
        /// Makes room for so many bits.
        void reserve(std::size_t bits);
        std::size_t count() const { return m_count; }

        /// The place of the bit with that @p hash for which @p isWanted returns true, or the gap
        /// where it has to stand. There is none before the first reserve().
        template <typename IsWanted>
        std::size_t find(uint hash, IsWanted isWanted) const;
        /// None in a gap.
        int idAt(std::size_t place) const { return m_places[place].id; }
        /// Needs room for a bit more.
        void fill(std::size_t gap, uint hash, int id);
        void remove(std::size_t place);

    private:
        struct Place
        {
            uint hash = 0;
            int id = None;
        };

        std::size_t within(std::size_t place) const { return place & (m_places.size() - 1); }
        std::size_t wanted(uint hash) const;

        std::vector<Place> m_places; ///< A power of two, at least a quarter are gaps.
        std::size_t m_count = 0;
    };

    const Bit &bit(int id) const { return m_bits[std::size_t(id)]; }
    Bit &bit(int id) { return m_bits[std::size_t(id)]; }
    int several(int i) const { return m_several[std::size_t(i)]; }
    std::size_t placeOf(const QString &name, uint hash) const;
    int idOf(const QString &name);
    int driverCount(const Bit &bit) const;
    int lastPort(const Bit &bit) const;
    void addDriver(const Driver &driver, Bit *bit);
    void removeDrivers(int port, Bit *bit);
    void dropList(Bit *bit);
    void touch(int id);
    void enter(Ids ids);
    void forget(int id);

    std::vector<Bit> m_bits;
    Ids m_freeBits;
    Table m_table;
    std::vector<Drivers> m_drivers =
        std::vector<Drivers>(1); ///< Of bits with several, until they are settled with less.
    Ids m_freeLists;
    std::vector<Ids> m_ports; ///< By number, the different bits of a port.
    Ids m_freePorts;
    Ids m_touched;
    Ids m_several;
};

} // namespace TARN
