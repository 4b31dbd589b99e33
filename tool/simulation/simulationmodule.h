// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulationnets.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace Tool {

/// What a module for the simulation is made of.
struct SimulationOptions
{
    bool isSystemVerilog = true; ///< Otherwise Verilog of 2005.
    QString module;              ///< Its name.
    QByteArray top;              ///< The instance of the design's top, as a Verilog name.
    QString source;              ///< Of the configuration, for the comment at the beginning.
};

/// A module that stands for the cores of a configuration in a simulation: it reads the nets of the
/// Probe In ports and drives those of the Probe Out ports.
///
/// The text is made in the constructor, in time and memory linear in the bits of the configuration
/// and the nets of the design. Nothing is referred to afterwards.
class SimulationModule
{
public:
    SimulationModule(const QList<TARN::TarnCore *> &cores, NETWEIR::RtlNetlist *netlist,
                     const SimulationOptions &options);

    const QByteArray &text() const { return m_text; }

    /// Whether the module for these cores has something of that name inside, which hides a module
    /// or an instance of that name outside.
    static bool declares(const QString &name, const QList<TARN::TarnCore *> &cores);

    /// What is left out because it does not fit the design, with its place: "tarn_0, Probe In2:
    /// hub_top/x is not in the design".
    const QStringList &misfits() const { return m_misfits; }

    /// How many bits are left out because they are in VHDL or below it.
    int bitsInVhdl() const { return m_bitsInVhdl; }

private:
    /// A signal of a port and its bits.
    struct Signal
    {
        QString name;
        int high = 0; ///< Its leftmost bit in the port.
        int width = 0;
        QVector<SimulatedBits> bits;
    };
    struct Port
    {
        TARN::ProbeType type = TARN::ProbeTypeIn;
        int index = 0;
        int width = 0;
        QByteArray value; ///< The initial value of a Probe Out port: "9'h1FF".
        QVector<Signal> contents;
    };
    struct Core
    {
        int index = 0;
        QByteArray clock; ///< The reference to the user clock, if the ports synchronise with it.
        QString clockName;
        QVector<Port> ports;
    };

    Core coreOf(const TARN::TarnCore &core);
    QByteArray clockOf(const TARN::TarnCore &core);
    Port portOf(const TARN::ProbeIn &port, TARN::ProbeType type, int core);
    void noteMisfit(const SimulatedBits &bits, const QString &place);

    void writeHead();
    void writeCore(const Core &core);
    void writeProbeIn(const Port &port, int core);
    void writeProbeOut(const Port &port, const Core &core);
    void writeDrivers(const Port &port, const QByteArray &source);
    void writeSet(const Core &core);
    void writeGet(const Core &core);
    void writeShow(const Core &core);
    void writeShownPort(const Port &port, int core);
    void writeChanges(const Port &port, const QByteArray &source, int core);
    void line(int level, const QByteArray &text);

    const SimulationOptions m_options;
    SimulationNets m_nets;
    QByteArray m_text;
    QStringList m_misfits;
    int m_bitsInVhdl = 0;
};

} // namespace Tool
