// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "anyconfig.h"

#include "dump.h"
#include "dumpnetlist.h"

#include <model/tarncore.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>

using TARN::SignalItem;
using TARN::TarnCore;

namespace TarnCompare {

namespace {

QString netName(const NumberedNetlist &design, Choice *choice)
{
    const QString name = design.nets().isEmpty() ? QStringLiteral("top/x")
                                                 : choice->any(design.nets())->fullPathName();
    return choice->chance(25) ? alike(name, choice) : name;
}

SignalItem netItem(const NumberedNetlist &design, Choice *choice)
{
    SignalItem item;
    item.kind = SignalItem::Net;
    item.name = netName(design, choice);
    return item;
}

SignalItem busItem(const NumberedNetlist &design, Choice *choice)
{
    const NETWEIR::RtlNetBus *bus = choice->any(design.buses());
    SignalItem item;
    item.kind = SignalItem::Bus;
    item.name = bus->fullBusName();
    if (choice->chance(20))
        item.name = alike(item.name, choice);
    for (const NETWEIR::RtlNet *net : bus->nets().mid(0, 64)) {
        SignalItem member;
        member.kind = choice->chance(90) ? SignalItem::Unset : SignalItem::Net;
        member.name = net->fullPathName();
        if (!choice->chance(5))
            item.members.append(member);
    }
    return item;
}

template <typename Port>
void editPort(Port *port, const NumberedNetlist &design, Choice *choice)
{
    if (port && choice->chance(50))
        port->signals = anySignals(design, choice);
    else if (port && !port->signals.isEmpty())
        port->signals.removeLast();
}

void fillCore(TarnCore *core, const NumberedNetlist &design, Choice *choice)
{
    core->syncUserClock = choice->chance(50);
    core->userClock = choice->chance(20) ? QString() : netName(design, choice);
    for (int count = choice->below(4); count > 0; --count) {
        core->addProbeIn(core->probeIns.size());
        core->probeIns.last()->signals = anySignals(design, choice);
    }
    for (int count = choice->below(4); count > 0; --count) {
        core->addProbeOut(core->probeOuts.size());
        core->probeOuts.last()->signals = anySignals(design, choice);
        core->probeOuts.last()->initialValue = anyValue(choice);
    }
}

void editCore(TarnCore *core, const NumberedNetlist &design, Choice *choice)
{
    switch (choice->below(7)) {
    case 0:
        core->userClock = netName(design, choice);
        core->syncUserClock = !core->syncUserClock;
        break;
    case 1:
        core->addProbeOut(core->probeOuts.size());
        break;
    case 2:
        core->removeProbeOut(choice->below(3));
        core->updateProbeOut();
        break;
    case 3:
        core->removeProbeIn(choice->below(3));
        core->updateProbeIn();
        break;
    case 4:
        if (!core->probeOuts.isEmpty())
            choice->any(core->probeOuts)->initialValue = anyValue(choice);
        break;
    case 5:
        editPort(core->getProbeIn(choice->below(3)), design, choice);
        break;
    default:
        editPort(core->getProbeOut(choice->below(3)), design, choice);
    }
}

template <typename Ports>
QString portsText(const Ports &ports)
{
    QString text;
    for (const auto *port : ports) {
        text += QStringLiteral(" #%1(").arg(port->index);
        for (const SignalItem &item : port->signals) {
            text += quoted(item.name);
            for (const SignalItem &member : item.members)
                text += QLatin1Char('+') + quoted(member.name);
        }
        text += QLatin1Char(')');
    }
    return text;
}

} // namespace

QList<SignalItem> anySignals(const NumberedNetlist &design, Choice *choice)
{
    QList<SignalItem> items;
    for (int count = choice->below(6); count > 0; --count) {
        const bool bus = choice->chance(50) && !design.buses().isEmpty();
        items.append(bus ? busItem(design, choice) : netItem(design, choice));
    }
    return items;
}

QString anyValue(Choice *choice)
{
    return choice->any(QStringList{QString(), "0x", "0x0", "0x1", "0x00F", "0x1F", "0xFFFFF",
                                   "no value", "0x123456789ABCDEF0123", "0xA5"});
}

QList<TarnCore *> anyCores(const NumberedNetlist &design, int most, Choice *choice)
{
    QList<TarnCore *> cores;
    for (int count = 1 + choice->below(most); count > 0; --count) {
        cores.append(new TarnCore(cores.size()));
        fillCore(cores.last(), design, choice);
    }
    return cores;
}

void editCores(QList<TarnCore *> *cores, const NumberedNetlist &design, Choice *choice)
{
    if (cores->isEmpty() || (cores->size() < 5 && choice->chance(15))) {
        cores->insert(choice->below(cores->size() + 1), new TarnCore(cores->size()));
        fillCore(choice->any(*cores), design, choice);
    } else if (cores->size() > 1 && choice->chance(10)) {
        delete cores->takeAt(choice->below(cores->size()));
    } else if (choice->chance(5)) {
        cores->move(0, cores->size() - 1);
    } else {
        editCore(choice->any(*cores), design, choice);
    }
    for (int i = 0; i < cores->size(); ++i)
        cores->at(i)->index = i;
}

QString textOf(const QList<TarnCore *> &cores)
{
    QString text;
    for (const TarnCore *core : cores) {
        text += QStringLiteral(" CORE %1 clock%2 %3 in%4 out%5 values")
                    .arg(core->index)
                    .arg(int(core->syncUserClock))
                    .arg(quoted(core->userClock), portsText(core->probeIns),
                         portsText(core->probeOuts));
        for (const TARN::ProbeOut *port : core->probeOuts)
            text += QLatin1Char(' ') + quoted(port->initialValue);
    }
    return text;
}

} // namespace TarnCompare
