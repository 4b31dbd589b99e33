// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "fullconfig.h"

#include <model/tarncore.h>

#include <QString>

using TARN::SignalItem;
using TARN::TarnCore;

namespace {

constexpr int BusWidth = 32;

SignalItem net(int number)
{
    SignalItem item;
    item.name = QStringLiteral("soc_top/u_cluster/u_core/u_lsu/data_%1").arg(number);
    item.kind = SignalItem::Net;
    return item;
}

SignalItem bus(int number)
{
    SignalItem item = net(number);
    item.kind = SignalItem::Bus;
    for (int bit = BusWidth - 1; bit >= 0; --bit) {
        SignalItem member = item;
        member.members.clear();
        member.name = QStringLiteral("%1[%2]").arg(item.name).arg(bit);
        item.members.append(member);
    }
    item.name += QStringLiteral("[%1:0]").arg(BusWidth - 1);
    return item;
}

} // namespace

QList<TarnCore *> TarnBench::fullConfig()
{
    QList<TarnCore *> cores;
    for (int index = 0; index < FullConfigCores; ++index) {
        auto *core = new TarnCore(index);
        core->module = QStringLiteral("soc_top");
        core->userClock = QStringLiteral("soc_top/clk");
        for (int port = 0; port < FullConfigPorts; ++port) {
            core->addProbeIn(port);
            for (int i = 0; i < FullConfigBits; ++i)
                core->probeIns.last()->signals.append(net(port * FullConfigBits + i));
            core->addProbeOut(port);
            core->probeOuts.last()->initialValue =
                QStringLiteral("0x") + QString(64, QLatin1Char('A'));
            for (int i = 0; i < FullConfigBits / BusWidth; ++i)
                core->probeOuts.last()->signals.append(bus(port * FullConfigBits + i));
        }
        cores.append(core);
    }
    return cores;
}
