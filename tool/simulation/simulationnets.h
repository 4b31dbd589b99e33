// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <model/tarncore.h>

#include <netweir/rtlnetlist.h>

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QVector>

namespace NETWEIR {
class Hierachy;
class RtlNet;
class RtlNetBus;
} // namespace NETWEIR

namespace Tool {

/// Bits of a signal that lie side by side in the design too, or that are left out for one reason.
struct SimulatedBits
{
    enum Kind {
        Reachable,
        InVhdl,      ///< Or below a VHDL unit: Verilog names do not lead there.
        Missing,     ///< The design has no such net.
        NotReadable, ///< A memory, or without a value in hardware.
        NotDrivable, ///< Has a driver in the design, or is no net.
        DrivenTwice, ///< On another Probe Out port, or twice on this one.
    };

    /// What a module can do to drive the bits.
    enum Driving {
        Continuous,  ///< By a continuous assignment.
        Variable,    ///< The same in SystemVerilog; in Verilog only in a process.
        Procedural,  ///< In a process: processes of the design drive other bits of the variable.
        Nonblocking, ///< The same; they do it by nonblocking assignments.
    };

    Kind kind = Missing;
    Driving driving = Continuous;
    int width = 1;
    QString name;         ///< Of the first bit, as the configuration has it.
    QByteArray reference; ///< In Verilog, if Reachable: "hub_tb.dut.data[7:4]".
};

/// The nets of a configuration as a module beside the design can name them.
///
/// Refers to the netlist, which must outlive it. Takes time linear in the nodes and nets of the
/// design, once, and in the bits of the configuration.
class SimulationNets
{
public:
    /// @p top is the Verilog name of the instance of the design's top.
    SimulationNets(NETWEIR::RtlNetlist *netlist, const QByteArray &top,
                   const QList<TARN::TarnCore *> &cores);

    /// The bits of @p signal on a port of @p type, most significant first. Drivable bits count as
    /// driven afterwards.
    QVector<SimulatedBits> bitsOf(const TARN::SignalItem &signal, TARN::ProbeType type);

    /// The net with this name, to be read.
    SimulatedBits net(const QString &name) const;

private:
    struct Place
    {
        const NETWEIR::Hierachy *node = nullptr; ///< Null in or below VHDL.
        const NETWEIR::RtlNetBus *bus = nullptr; ///< Null for a single net.
        int position = 0;                        ///< In the bus.
    };
    /// Bits that follow each other: the first, and the position of the last one in its bus.
    struct Run
    {
        NETWEIR::RtlNet *net = nullptr;
        Place first;
        int last = 0;
    };

    void want(const QString &name);
    void findPlaces();
    void visit(const NETWEIR::Hierachy *node, bool isReachable);
    void note(const NETWEIR::RtlNet *net, const Place &place);
    SimulatedBits bitOf(const QString &name, TARN::ProbeType type, Run *run) const;
    QByteArray referenceOf(const Run &run) const;
    const QByteArray &pathOf(const NETWEIR::Hierachy *node) const;

    NETWEIR::RtlNetlist *m_netlist;
    const QByteArray m_top;
    QHash<const NETWEIR::RtlNet *, Place> m_places;
    QSet<const NETWEIR::RtlNet *> m_driven;
    mutable QHash<const NETWEIR::Hierachy *, QByteArray> m_paths;
};

} // namespace Tool
