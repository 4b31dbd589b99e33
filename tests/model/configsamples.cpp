// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configsamples.h"

#include <probes/signalsamples.h>

#include <QStringList>

using TARN::ProbeIn;
using TARN::ProbeOut;
using TARN::SignalItem;
using TARN::TarnCore;
using TarnTest::bus;
using TarnTest::net;

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

Cores sampleCores()
{
    Cores cores;
    TarnCore *first = cores.add(0);
    first->module = QStringLiteral("top");
    first->userClock = QStringLiteral("top/clk");
    first->syncUserClock = true;
    first->addProbeIn(0);
    first->probeIns.at(0)->signals = {
        bus(QStringLiteral("top/u0/data[1:0]"),
            {QStringLiteral("top/u0/data[1]"), QStringLiteral("top/u0/data[0]")}),
        net(QStringLiteral("top/valid"))};
    first->addProbeIn(1);
    first->addProbeOut(0);
    first->probeOuts.at(0)->initialValue = QStringLiteral("0x1F");
    SignalItem config = bus(QStringLiteral("top/cfg[1:0]"),
                            {QStringLiteral("top/cfg[1]"), QStringLiteral("top/cfg[0]")});
    config.usable = false;
    config.displayName = QStringLiteral("cfg");
    config.members[1].enabled = false;
    SignalItem plain;
    plain.enabled = false;
    plain.usable = false;
    first->probeOuts.at(0)->signals = {config, plain};
    first->addProbeOut(1);

    TarnCore *second = cores.add(7);
    second->addProbeOut(3);
    second->probeOuts.at(0)->signals = {net(QStringLiteral("top/en"))};
    return cores;
}
