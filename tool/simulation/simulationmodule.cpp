// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "simulationmodule.h"

#include "verilogname.h"

#include <model/bitstring.h>
#include <model/portbits.h>
#include <model/portlimits.h>
#include <tool/printable.h>
#include <tool/wording.h>

#include <QMap>

#include <algorithm>
#include <iterator>

namespace Tool {

using TARN::ProbeType;

namespace {

constexpr int Indentation = 4;

/// Of Verilator: several tops, driven inputs of instances, and nonblocking assignments without a
/// clock.
constexpr const char *HarmlessWarnings[] = {"MULTITOP", "ASSIGNIN", "COMBDLY"};

/// In the module and in each core, beside those with a number.
constexpr const char *OwnNames[] = {"SHOW_CHANGES", "show_changes", "user_clock",
                                    "set",          "get",          "show"};
constexpr char SyncedSuffix[] = "_synced";

QByteArray number(int value)
{
    return QByteArray::number(value);
}

/// "[7:0]": also for one bit, so that every port is a vector.
QByteArray range(int high, int width)
{
    return '[' + number(high) + ':' + number(high - width + 1) + ']';
}

/// The part of a vector: "in0[7:4]", "in0[3]".
QByteArray part(const QByteArray &vector, int high, int width)
{
    return vector + (width == 1 ? '[' + number(high) + ']' : range(high, width));
}

QByteArray unknown(int width)
{
    return number(width) + "'b" + QByteArray(width, 'x');
}

QByteArray nameOf(ProbeType type)
{
    return type == TARN::ProbeTypeIn ? "Probe In" : "Probe Out";
}

/// Why bits are left out.
QByteArray reasonOf(SimulatedBits::Kind kind)
{
    switch (kind) {
    case SimulatedBits::InVhdl:
        return "is in VHDL or below it";
    case SimulatedBits::NotReadable:
        return "cannot be read";
    case SimulatedBits::NotDrivable:
        return "has a driver or is no net that can be driven";
    case SimulatedBits::DrivenTwice:
        return "is driven by another Probe Out port";
    default:
        return "is not in the design";
    }
}

/// For the end of a line comment: a backslash there might continue the line.
QByteArray commentText(const QString &text)
{
    const QByteArray comment = printable(text);
    return comment.endsWith('\\') ? comment + '.' : comment;
}

QByteArray keywordFor(bool isSystemVerilog)
{
    return isSystemVerilog ? "logic" : "reg";
}

template <typename Ports>
int widest(const Ports &ports, ProbeType type)
{
    int width = 1;
    for (const auto &port : ports) {
        if (port.type == type)
            width = std::max(width, port.width);
    }
    return width;
}

} // namespace

SimulationModule::SimulationModule(const QList<TARN::TarnCore *> &cores,
                                   NETWEIR::RtlNetlist *netlist, const SimulationOptions &options)
    : m_options(options)
    , m_nets(netlist, options.top, cores)
{
    writeHead();
    for (const TARN::TarnCore *core : cores)
        writeCore(coreOf(*core));
    line(0, "endmodule");
    for (const char *warning : HarmlessWarnings)
        line(0, QByteArray("/* verilator lint_on ") + warning + " */");
}

bool SimulationModule::declares(const QString &name, const QList<TARN::TarnCore *> &cores)
{
    const auto is = [&name](const QByteArray &own) { return name == QLatin1String(own); };
    const auto isIn = [&is](const TARN::ProbeIn *port) { return is("in" + number(port->index)); };
    const auto isOut = [&is](const TARN::ProbeOut *port) {
        const QByteArray own = "out" + number(port->index);
        return is(own) || is(own + SyncedSuffix);
    };
    const auto isInCore = [&](const TARN::TarnCore *core) {
        return is("core" + number(core->index)) ||
               std::any_of(core->probeIns.cbegin(), core->probeIns.cend(), isIn) ||
               std::any_of(core->probeOuts.cbegin(), core->probeOuts.cend(), isOut);
    };
    return std::any_of(std::begin(OwnNames), std::end(OwnNames), is) ||
           std::any_of(cores.cbegin(), cores.cend(), isInCore);
}

// ----- What is in the module -----

SimulationModule::Core SimulationModule::coreOf(const TARN::TarnCore &core)
{
    Core result;
    result.index = core.index;
    result.clockName = core.userClock;
    result.clock = clockOf(core);
    for (const TARN::ProbeIn *port : core.probeIns)
        result.ports.append(portOf(*port, TARN::ProbeTypeIn, core.index));
    for (const TARN::ProbeOut *port : core.probeOuts) {
        result.ports.append(portOf(*port, TARN::ProbeTypeOut, core.index));
        Port &added = result.ports.last();
        added.value =
            number(added.width) + "'h" +
            TARN::stringBintoHex(TARN::storedBits(port->initialValue, added.width)).toLatin1();
    }
    return result;
}

QByteArray SimulationModule::clockOf(const TARN::TarnCore &core)
{
    if (!core.syncUserClock)
        return {};
    const QString place = QStringLiteral("tarn_%1, user clock").arg(core.index);
    if (core.userClock.isEmpty()) {
        m_misfits.append(place + QLatin1String(": none is chosen"));
        return {};
    }
    const SimulatedBits clock = m_nets.net(core.userClock);
    noteMisfit(clock, place);
    return clock.reference;
}

SimulationModule::Port SimulationModule::portOf(const TARN::ProbeIn &port, ProbeType type, int core)
{
    Port result;
    result.type = type;
    result.index = port.index;
    result.width = TARN::widthOf(port.signals);
    const QString place = QStringLiteral("tarn_%1, %2%3")
                              .arg(core)
                              .arg(QString::fromLatin1(nameOf(type)))
                              .arg(port.index);
    int high = result.width - 1;
    for (const TARN::SignalItem &item : port.signals) {
        Signal signal;
        signal.name = item.name;
        signal.high = high;
        signal.width = item.width();
        signal.bits = m_nets.bitsOf(item, type);
        for (const SimulatedBits &bits : qAsConst(signal.bits))
            noteMisfit(bits, place);
        high -= signal.width;
        result.contents.append(signal);
    }
    return result;
}

void SimulationModule::noteMisfit(const SimulatedBits &bits, const QString &place)
{
    if (bits.kind == SimulatedBits::Reachable)
        return;
    if (bits.kind == SimulatedBits::InVhdl) {
        m_bitsInVhdl += bits.width;
        return;
    }
    const QString more = bits.width > 1 ? QStringLiteral(" (and %1 after it)")
                                              .arg(counted(bits.width - 1, QStringLiteral("bit")))
                                        : QString();
    m_misfits.append(place + QLatin1String(": ") + QString::fromUtf8(printable(bits.name)) + more +
                     QLatin1Char(' ') + QString::fromLatin1(reasonOf(bits.kind)));
}

// ----- Its text -----

void SimulationModule::line(int level, const QByteArray &text)
{
    if (!text.isEmpty())
        m_text += QByteArray(level * Indentation, ' ') + text;
    m_text += '\n';
}

void SimulationModule::writeHead()
{
    const QByteArray module = verilogIdentifier(m_options.module);
    line(0,
         "// The virtual I/O cores of " + commentText(m_options.source) + " for the simulation.");
    line(0, "// Written by tarn export simulation. Simulate this module as one more top.");
    line(0, "//");
    line(0, "//   " + module + ".core0.set(PORT, VALUE);    sets a Probe Out port");
    line(0, "//   VALUE = " + module + ".core0.get(PORT);   the value of a Probe In port");
    line(0, "//   " + module + ".core0.show(PORT);          prints the ports with that number");
    line(0, "//   " + module + ".core0.in0, .core0.out0     the ports themselves");
    line(0, "//");
    line(0, "// The argument +tarn_changes of the simulation prints each change of a port, and so "
            "does the");
    line(0, "// parameter SHOW_CHANGES.");
    line(0, QByteArray());
    for (const char *warning : HarmlessWarnings)
        line(0, QByteArray("/* verilator lint_off ") + warning + " */");
    line(0, "module " + module + " #(parameter SHOW_CHANGES = 0);");
    line(0, QByteArray());
    line(1, keywordFor(m_options.isSystemVerilog) + " show_changes;");
    line(1, "initial show_changes = SHOW_CHANGES != 0 || $test$plusargs(\"tarn_changes\") != 0;");
    line(0, QByteArray());
}

void SimulationModule::writeCore(const Core &core)
{
    if (!m_options.isSystemVerilog)
        line(1, "generate");
    line(1, "if (1) begin : core" + number(core.index));
    if (!core.clock.isEmpty()) {
        line(2, "// " + commentText(core.clockName));
        line(2, "wire user_clock = " + core.clock + ';');
        line(0, QByteArray());
    }
    for (const Port &port : core.ports) {
        if (port.type == TARN::ProbeTypeIn)
            writeProbeIn(port, core.index);
        else
            writeProbeOut(port, core);
    }
    writeSet(core);
    writeGet(core);
    writeShow(core);
    line(1, "end");
    if (!m_options.isSystemVerilog)
        line(1, "endgenerate");
    line(0, QByteArray());
}

void SimulationModule::writeProbeIn(const Port &port, int core)
{
    const QByteArray name = "in" + number(port.index);
    if (port.width == 0)
        return line(2, "// Probe In " + number(port.index) + " has no signals.\n");
    line(2, "wire " + range(port.width - 1, port.width) + ' ' + name + " = {");
    for (const Signal &signal : port.contents) {
        int high = signal.high;
        for (const SimulatedBits &bits : signal.bits) {
            const bool isLast = high + 1 == bits.width;
            const bool isReachable = bits.kind == SimulatedBits::Reachable;
            QByteArray text = isReachable ? bits.reference : unknown(bits.width);
            text += isLast ? " // " : ", // ";
            text += part(QByteArray(), high, bits.width) + ' ';
            text += commentText(bits.width == signal.width ? signal.name : bits.name);
            if (!isReachable)
                text += ' ' + reasonOf(bits.kind);
            line(3, text);
            high -= bits.width;
        }
    }
    line(2, "};");
    writeChanges(port, name, core);
}

void SimulationModule::writeProbeOut(const Port &port, const Core &core)
{
    const QByteArray name = "out" + number(port.index);
    if (port.width == 0)
        return line(2, "// Probe Out " + number(port.index) + " has no signals.\n");
    const QByteArray type =
        keywordFor(m_options.isSystemVerilog) + ' ' + range(port.width - 1, port.width) + ' ';
    line(2, type + name + " = " + port.value + ';');
    QByteArray source = name;
    if (!core.clock.isEmpty()) {
        source += SyncedSuffix;
        line(2, type + source + " = " + port.value + ';');
        line(2, (m_options.isSystemVerilog ? "always_ff" : "always") +
                    QByteArray(" @(posedge user_clock) ") + source + " <= " + name + ';');
    }
    writeDrivers(port, source);
    writeChanges(port, source, core.index);
}

void SimulationModule::writeDrivers(const Port &port, const QByteArray &source)
{
    for (const Signal &signal : port.contents) {
        int high = signal.high;
        for (const SimulatedBits &bits : signal.bits) {
            const QByteArray driving = part(source, high, bits.width);
            const QByteArray comment =
                part(QByteArray(), high, bits.width) + ' ' +
                commentText(bits.width == signal.width ? signal.name : bits.name);
            high -= bits.width;
            if (bits.kind != SimulatedBits::Reachable) {
                line(2, "// " + comment + ' ' + reasonOf(bits.kind));
                continue;
            }
            if (bits.driving == SimulatedBits::Continuous ||
                (bits.driving == SimulatedBits::Variable && m_options.isSystemVerilog)) {
                line(2, "assign " + bits.reference + " = " + driving + "; // " + comment);
                continue;
            }
            const QByteArray assignment =
                bits.driving == SimulatedBits::Nonblocking ? " <= " : " = ";
            line(2, "initial " + bits.reference + " = " + driving + "; // " + comment);
            line(2, "always @(" + source + ") " + bits.reference + assignment + driving + ';');
        }
    }
}

void SimulationModule::writeChanges(const Port &port, const QByteArray &source, int core)
{
    line(2, "always @(" + source + ") if (show_changes)");
    line(3, "$display(\"%0t core " + number(core) + ' ' + nameOf(port.type) + ' ' +
                number(port.index) + ": %h\", $time, " + source + ");");
    line(0, QByteArray());
}

void SimulationModule::writeSet(const Core &core)
{
    const QByteArray value =
        range(widest(core.ports, TARN::ProbeTypeOut) - 1, widest(core.ports, TARN::ProbeTypeOut)) +
        " value";
    if (m_options.isSystemVerilog) {
        line(2, "task automatic set(input int port, input logic " + value + ");");
    } else {
        line(2, "task set;");
        line(3, "input integer port;");
        line(3, "input " + value + ';');
    }
    line(3, "case (port)");
    for (const Port &port : core.ports) {
        if (port.type == TARN::ProbeTypeOut && port.width > 0)
            line(3, number(port.index) + ": out" + number(port.index) + " = value" +
                        range(port.width - 1, port.width) + ';');
    }
    line(3, "default: $display(\"core " + number(core.index) + " has no Probe Out %0d\", port);");
    line(3, "endcase");
    line(2, "endtask");
    line(0, QByteArray());
}

/// A function: Verilator wants variables of just the right width for the output of a task.
void SimulationModule::writeGet(const Core &core)
{
    const int width = widest(core.ports, TARN::ProbeTypeIn);
    if (m_options.isSystemVerilog) {
        line(2, "function automatic logic " + range(width - 1, width) + " get(input int port);");
    } else {
        line(2, "function " + range(width - 1, width) + " get;");
        line(3, "input integer port;");
    }
    line(3, "case (port)");
    for (const Port &port : core.ports) {
        if (port.type != TARN::ProbeTypeIn || port.width == 0)
            continue;
        const QByteArray name = "in" + number(port.index);
        const int missing = width - port.width;
        line(3, number(port.index) + ": get = " +
                    (missing == 0 ? name : '{' + number(missing) + "'d0, " + name + '}') + ';');
    }
    line(3, "default: get = {" + number(width) + "{1'bx}};");
    line(3, "endcase");
    line(2, "endfunction");
    line(0, QByteArray());
}

void SimulationModule::writeShow(const Core &core)
{
    QMap<int, QVector<const Port *>> ports;
    for (const Port &port : core.ports) {
        if (port.width > 0)
            ports[port.index].append(&port);
    }
    if (m_options.isSystemVerilog) {
        line(2, "task automatic show(input int port);");
    } else {
        line(2, "task show;");
        line(3, "input integer port;");
    }
    line(3, "case (port)");
    for (auto same = ports.cbegin(); same != ports.cend(); ++same) {
        line(3, number(same.key()) + ": begin");
        for (const Port *port : *same)
            writeShownPort(*port, core.index);
        line(3, "end");
    }
    line(3, "default: $display(\"core " + number(core.index) + " has no port %0d\", port);");
    line(3, "endcase");
    line(2, "endtask");
}

void SimulationModule::writeShownPort(const Port &port, int core)
{
    const QByteArray name = (port.type == TARN::ProbeTypeIn ? "in" : "out") + number(port.index);
    line(4, "$display(\"%0t core " + number(core) + ' ' + nameOf(port.type) + ' ' +
                number(port.index) + ": %h\", $time, " + name + ");");
    for (const Signal &signal : port.contents) {
        line(4, "$display(\"    " + displayText(signal.name) + " = %h\", " +
                    part(name, signal.high, signal.width) + ");");
    }
}

} // namespace Tool
