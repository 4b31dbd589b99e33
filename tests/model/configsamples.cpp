// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configsamples.h"

#include <QStringList>

using TARN::ProbeIn;
using TARN::ProbeOut;
using TARN::SignalItem;
using TARN::TarnCore;

namespace {

QString quoted(const QString &text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

void appendSignals(const QList<SignalItem> &list, int level, QStringList *lines)
{
    for (const SignalItem &item : list) {
        lines->append(QString(level * 2, QLatin1Char(' ')) + quoted(item.name) + QLatin1Char(' ') +
                      quoted(item.displayName) +
                      QStringLiteral(" enabled %1 usable %2 kind %3")
                          .arg(int(item.enabled))
                          .arg(int(item.usable))
                          .arg(item.kind));
        appendSignals(item.members, level + 1, lines);
    }
}

} // namespace

QString coresText(const QList<TarnCore *> &cores)
{
    QStringList lines;
    for (const TarnCore *core : cores) {
        lines.append(QStringLiteral("core %1 ").arg(core->index) + quoted(core->module) +
                     QStringLiteral(" clock ") + quoted(core->userClock) +
                     QStringLiteral(" sync %1").arg(int(core->syncUserClock)));
        for (const ProbeIn *port : core->probeIns) {
            lines.append(QStringLiteral(" in %1").arg(port->index));
            appendSignals(port->signals, 1, &lines);
        }
        for (const ProbeOut *port : core->probeOuts) {
            lines.append(QStringLiteral(" out %1 ").arg(port->index) + quoted(port->initialValue));
            appendSignals(port->signals, 1, &lines);
        }
    }
    return lines.join(QLatin1Char('\n'));
}

SignalItem netItem(const QString &name)
{
    SignalItem item;
    item.name = name;
    item.kind = SignalItem::Net;
    return item;
}

SignalItem busItem(const QString &name, int width)
{
    SignalItem item;
    item.name = QStringLiteral("%1[%2:0]").arg(name).arg(width - 1);
    item.kind = SignalItem::Bus;
    for (int bit = width - 1; bit >= 0; --bit) {
        SignalItem member = netItem(QStringLiteral("%1[%2]").arg(name).arg(bit));
        member.kind = SignalItem::Bus;
        item.members.append(member);
    }
    return item;
}

Cores sampleCores()
{
    Cores cores;
    TarnCore *first = cores.add(0);
    first->module = QStringLiteral("top");
    first->userClock = QStringLiteral("top/clk");
    first->syncUserClock = true;
    first->addProbeIn(0);
    first->probeIns.at(0)->signals = {busItem(QStringLiteral("top/u0/data"), 2),
                                      netItem(QStringLiteral("top/valid"))};
    first->addProbeIn(1);
    first->addProbeOut(0);
    first->probeOuts.at(0)->initialValue = QStringLiteral("0x1F");
    SignalItem bus = busItem(QStringLiteral("top/cfg"), 2);
    bus.usable = false;
    bus.displayName = QStringLiteral("cfg");
    bus.members[1].enabled = false;
    SignalItem plain;
    plain.enabled = false;
    plain.usable = false;
    first->probeOuts.at(0)->signals = {bus, plain};
    first->addProbeOut(1);

    TarnCore *second = cores.add(7);
    second->addProbeOut(3);
    second->probeOuts.at(0)->signals = {netItem(QStringLiteral("top/en"))};
    return cores;
}
