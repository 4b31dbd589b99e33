// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "counterpart.h"

#include "designnames.h"

#include <model/netsignals.h>

namespace TARN {

bool isBelow(const QString &name, const QString &instance)
{
    return name.size() > instance.size() && name.at(instance.size()) == QLatin1Char('/') &&
           name.startsWith(instance);
}

QString movedName(const QString &name, const QString &from, const QString &to)
{
    return isBelow(name, from) ? to + name.midRef(from.size()) : QString();
}

NETWEIR::RtlNet *usableNet(const QString &name, ProbeType type, const DesignNames &names)
{
    NETWEIR::RtlNet *net = names.net(name);
    return net && !isExcluded(net, type) ? net : nullptr;
}

NETWEIR::RtlNetBus *usableBus(const QString &name, ProbeType type, const DesignNames &names)
{
    NETWEIR::RtlNetBus *bus = names.bus(name);
    return bus && !isExcluded(bus, type) ? bus : nullptr;
}

} // namespace TARN
