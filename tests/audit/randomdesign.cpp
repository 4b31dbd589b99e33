// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "randomdesign.h"

#include <netweir/hierachy.h>
#include <netweir/netlistbuilder.h>

using TARN::ConfigSnapshot;
using TARN::SignalItem;
using TARN::TarnCore;

namespace TarnTest {

namespace {

const QStringList stock{"a", "b", "c", "%1", "d[0]", "d[2]", "m[1][0]", "d[3:0]", "clk"};
const QStringList baseStock{"d", "e", "m[1]", "a"};
const QStringList pathStock{"top/", "top/u0/"};
const QStringList valueStock{"", "0x", "0x0", "0x1", "0x00F", "0x1F", "0xFFFFF", "no value"};

} // namespace

KnownDesign RandomDesign::design()
{
    KnownDesign design;
    NETWEIR::NetlistBuilder builder("top");
    NETWEIR::Hierachy *const top = builder.top();
    const std::pair<QString, NETWEIR::Hierachy *> nodes[] = {
        {pathStock.first(), top}, {pathStock.last(), builder.addHierachy(top, "u0", "m")}};
    for (const auto &[path, node] : nodes) {
        for (int count = below(8); count > 0; --count) {
            if (chance(50))
                addNet(&builder, node, path, &design);
            else
                addBus(&builder, node, path, &design);
        }
    }
    design.netlist = builder.take();
    return design;
}

void RandomDesign::addNet(NETWEIR::NetlistBuilder *builder, NETWEIR::Hierachy *node,
                          const QString &path, KnownDesign *design)
{
    const QString name = chance(60) ? any(stock) : any(baseStock);
    const NETWEIR::NetMarks marks{chance(15), chance(15)};
    builder->addNet(node, name, marks);
    design->nets.append({path + name, marks.excludedForProbeIn, marks.excludedForProbeOut});
}

void RandomDesign::addBus(NETWEIR::NetlistBuilder *builder, NETWEIR::Hierachy *node,
                          const QString &path, KnownDesign *design)
{
    const QString name = any(baseStock);
    const int left = below(5);
    const int right = below(5);
    KnownDesign::Bus bus;
    bus.base = path + name;
    bus.name = bus.base + QString("[%1:%2]").arg(left).arg(right);
    const int step = left > right ? -1 : 1;
    std::vector<NETWEIR::NetMarks> marks;
    for (int bit = left; bit != right + step; bit += step) {
        marks.push_back({chance(15), chance(15)});
        bus.bits.append({bus.base + QString("[%1]").arg(bit), marks.back().excludedForProbeIn,
                         marks.back().excludedForProbeOut});
    }
    builder->addBus(node, name, left, right, marks);
    design->nets += bus.bits;
    design->buses.append(bus);
}

QString RandomDesign::anyName(const KnownDesign &design)
{
    if (!design.nets.isEmpty() && chance(80))
        return any(design.nets).name;
    return any(pathStock) + any(stock);
}

void RandomDesign::damage(SignalItem *bus)
{
    if (bus->members.size() > 1 && chance(30))
        bus->members.removeAt(below(bus->members.size()));
    if (chance(10))
        any(bus->members).name = any(pathStock) + any(stock);
    if (chance(10))
        bus->members.append(any(bus->members));
    if (chance(10))
        std::swap(any(bus->members), any(bus->members));
    if (chance(10))
        bus->name.replace('[', "[1");
    if (chance(5))
        bus->name = any(pathStock) + any(baseStock);
    if (chance(5))
        bus->name += "[-1:x]";
}

SignalItem RandomDesign::busItem(const KnownDesign &design)
{
    SignalItem item;
    const KnownDesign::Bus &bus = any(design.buses);
    item.kind = SignalItem::Bus;
    item.name = bus.name;
    for (const KnownDesign::Net &bit : bus.bits) {
        SignalItem member;
        member.name = bit.name;
        item.members.append(member);
    }
    if (chance(50))
        damage(&item);
    return item;
}

SignalItem RandomDesign::item(const KnownDesign &design)
{
    if (!design.buses.isEmpty() && chance(60))
        return busItem(design);
    SignalItem item;
    item.kind = chance(90) ? SignalItem::Net : SignalItem::Bus;
    item.name = anyName(design);
    return item;
}

QList<SignalItem> RandomDesign::items(const KnownDesign &design)
{
    QList<SignalItem> items;
    for (int count = below(5); count > 0; --count)
        items.append(item(design));
    return items;
}

void RandomDesign::fill(TarnCore *core, const KnownDesign &design)
{
    core->syncUserClock = chance(50);
    core->userClock = chance(20) ? QString() : anyName(design);
    for (int count = below(4); count > 0; --count) {
        core->addProbeIn(core->probeIns.size());
        core->probeIns.last()->signals = items(design);
    }
    for (int count = below(4); count > 0; --count) {
        core->addProbeOut(core->probeOuts.size());
        core->probeOuts.last()->signals = items(design);
        core->probeOuts.last()->initialValue = any(valueStock);
    }
}

ConfigSnapshot RandomDesign::config(const KnownDesign &design)
{
    QList<TarnCore *> cores;
    for (int count = below(4); count > 0; --count) {
        cores.append(new TarnCore(cores.size()));
        fill(cores.last(), design);
    }
    ConfigSnapshot config = TARN::snapshotOf(cores);
    qDeleteAll(cores);
    return config;
}

void RandomDesign::editCore(TarnCore *core, const KnownDesign &design)
{
    TARN::ProbeIn *in = core->getProbeIn(below(3));
    TARN::ProbeOut *out = core->getProbeOut(below(3));
    switch (below(8)) {
    case 0:
        core->userClock = anyName(design);
        core->syncUserClock = chance(80);
        break;
    case 1:
        core->addProbeOut(core->probeOuts.size());
        break;
    case 2:
        core->removeProbeOut(0);
        core->updateProbeOut();
        break;
    case 3:
        core->removeProbeIn(below(3));
        core->updateProbeIn();
        break;
    case 4:
        if (out)
            out->initialValue = any(valueStock);
        break;
    case 5:
        if (in)
            in->signals = items(design);
        break;
    default:
        if (out)
            out->signals = items(design);
    }
}

void RandomDesign::editCores(QList<TarnCore *> *cores, const KnownDesign &design)
{
    if (cores->isEmpty() || (cores->size() < 5 && chance(10))) {
        cores->insert(below(cores->size() + 1), new TarnCore(cores->size()));
        fill(any(*cores), design);
    } else if (chance(10)) {
        delete cores->takeAt(below(cores->size()));
    } else if (chance(10)) {
        std::swap(any(*cores), any(*cores));
    } else {
        editCore(any(*cores), design);
    }
}

ConfigSnapshot RandomDesign::edited(const ConfigSnapshot &config, const KnownDesign &design)
{
    // Snapshots may hold an object more than once.
    if (!config.cores.isEmpty() && config.cores.size() < 5 && chance(5)) {
        ConfigSnapshot twice = config;
        twice.cores.append(
            {config.cores.size(), config.cores.at(below(config.cores.size())).content});
        return twice;
    }
    QList<TarnCore *> cores = TARN::newCores(config);
    editCores(&cores, design);
    ConfigSnapshot next = TARN::snapshotOf(cores, config);
    qDeleteAll(cores);
    return next;
}

} // namespace TarnTest
