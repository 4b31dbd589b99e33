// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "simulationnets.h"

#include "verilogname.h"

#include <model/netsignals.h>
#include <model/signalbits.h>
#include <netweir/hierachy.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>

#include <utility>
#include <vector>

namespace Tool {

using NETWEIR::Hierachy;
using NETWEIR::NameStep;
using NETWEIR::RtlNet;
using NETWEIR::RtlNetBus;

namespace {

/// The last index of a bit of a bus, without the brackets: "3" of "data[1][3]".
QString indexOf(const RtlNet *net)
{
    const QString path = net->fullPathName();
    const int bracket = path.lastIndexOf(QLatin1Char('['));
    return path.mid(bracket + 1, path.size() - bracket - 2);
}

/// Other bits of the variable may be written by processes of the design.
SimulatedBits::Driving drivingOf(const RtlNet *net)
{
    switch (net->processWrites()) {
    case NETWEIR::ProcessWrites::Possible:
        return SimulatedBits::Variable;
    case NETWEIR::ProcessWrites::Blocking:
        return SimulatedBits::Procedural;
    case NETWEIR::ProcessWrites::Nonblocking:
        return SimulatedBits::Nonblocking;
    default:
        return SimulatedBits::Continuous;
    }
}

} // namespace

SimulationNets::SimulationNets(NETWEIR::RtlNetlist *netlist, const QByteArray &top,
                               const QList<TARN::TarnCore *> &cores)
    : m_netlist(netlist)
    , m_top(top)
{
    const auto wantBit = [this](const QString &name, int, int) { want(name); };
    for (const TARN::TarnCore *core : cores) {
        for (const TARN::ProbeIn *port : core->probeIns)
            TARN::forEachBit(port->signals, wantBit);
        for (const TARN::ProbeOut *port : core->probeOuts)
            TARN::forEachBit(port->signals, wantBit);
        want(core->userClock);
    }
    findPlaces();
}

void SimulationNets::want(const QString &name)
{
    if (const RtlNet *net = m_netlist->findNet(name))
        m_places.insert(net, {});
}

/// A net does not know its node, so all nodes are visited.
void SimulationNets::findPlaces()
{
    if (m_places.isEmpty())
        return;
    std::vector<std::pair<const Hierachy *, bool>> pending{{m_netlist->top(), true}};
    while (!pending.empty()) {
        const auto [node, isAboveReachable] = pending.back();
        pending.pop_back();
        const bool isReachable = isAboveReachable && !node->isVhdl();
        visit(node, isReachable);
        for (const Hierachy *child : node->children())
            pending.emplace_back(child, isReachable);
    }
}

void SimulationNets::visit(const Hierachy *node, bool isReachable)
{
    const Hierachy *reached = isReachable ? node : nullptr;
    for (const RtlNet *net : node->nets())
        note(net, {reached, nullptr, 0});
    for (const RtlNetBus *bus : node->buses()) {
        for (int i = 0; i < bus->nets().size(); ++i)
            note(bus->nets().at(i), {reached, bus, i});
    }
}

void SimulationNets::note(const RtlNet *net, const Place &place)
{
    const auto wanted = m_places.find(net);
    if (wanted != m_places.end())
        *wanted = place;
}

QVector<SimulatedBits> SimulationNets::bitsOf(const TARN::SignalItem &signal, TARN::ProbeType type)
{
    QVector<SimulatedBits> bits;
    Run run;
    const auto finish = [this, &bits, &run] {
        if (run.net)
            bits.last().reference = referenceOf(run);
    };
    TARN::forEachBit({signal}, [&](const QString &name, int, int) {
        Run next;
        const SimulatedBits bit = bitOf(name, type, &next);
        if (type == TARN::ProbeTypeOut && next.net)
            m_driven.insert(next.net);
        const bool follows =
            next.net ? run.net && next.first.bus && next.first.bus == run.first.bus &&
                           next.last == run.last + 1 && bit.driving == bits.last().driving
                     : !run.net && !bits.isEmpty() && bits.last().kind == bit.kind;
        if (follows) {
            ++bits.last().width;
            run.last = next.last;
            return;
        }
        finish();
        bits.append(bit);
        run = next;
    });
    finish();
    return bits;
}

SimulatedBits SimulationNets::net(const QString &name) const
{
    Run run;
    SimulatedBits bit = bitOf(name, TARN::ProbeTypeIn, &run);
    if (run.net)
        bit.reference = referenceOf(run);
    return bit;
}

/// @p run is set if the bit is reachable.
SimulatedBits SimulationNets::bitOf(const QString &name, TARN::ProbeType type, Run *run) const
{
    SimulatedBits bit;
    bit.name = name;
    RtlNet *net = m_netlist->findNet(name);
    if (!net)
        return bit;
    bit.driving = drivingOf(net);
    const Place place = m_places.value(net);
    if (TARN::isExcluded(net, type))
        bit.kind =
            type == TARN::ProbeTypeOut ? SimulatedBits::NotDrivable : SimulatedBits::NotReadable;
    else if (type == TARN::ProbeTypeOut && m_driven.contains(net))
        bit.kind = SimulatedBits::DrivenTwice;
    else
        bit.kind = place.node ? SimulatedBits::Reachable : SimulatedBits::InVhdl;
    if (bit.kind == SimulatedBits::Reachable)
        *run = {net, place, place.position};
    return bit;
}

QByteArray SimulationNets::referenceOf(const Run &run) const
{
    const int width = run.last - run.first.position + 1;
    QVector<NameStep> steps = m_netlist->nameStepsOf(run.net);
    if (width > 1) {
        QString &indexes = steps.last().indexes;
        indexes.chop(1);
        indexes +=
            QLatin1Char(':') + indexOf(run.first.bus->nets().at(run.last)) + QLatin1Char(']');
    }
    return pathOf(run.first.node) + '.' + verilogPath(steps);
}

const QByteArray &SimulationNets::pathOf(const Hierachy *node) const
{
    const auto known = m_paths.constFind(node);
    if (known != m_paths.constEnd())
        return *known;
    QByteArray path;
    for (const Hierachy *level = node; level->parent(); level = level->parent())
        path.prepend('.' + verilogPath(m_netlist->nameStepsOf(level)));
    return *m_paths.insert(node, m_top + path);
}

} // namespace Tool
