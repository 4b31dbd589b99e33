// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "counterpart.h"

#include "designnames.h"

#include <model/netsignals.h>

namespace TARN {

QString movedName(const QString &name, const QString &from, const QString &to)
{
    const bool below = name.size() > from.size() && name.at(from.size()) == QLatin1Char('/') &&
                       name.startsWith(from);
    return below ? to + name.midRef(from.size()) : QString();
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
