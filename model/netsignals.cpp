// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "netsignals.h"

#include <sdk/netweir.h>

namespace TARN {

namespace {

/// @p source is a net or a bus.
template <typename Source>
bool hasMark(Source *source, ProbeType type)
{
    return type == ProbeTypeOut ? source->excludedForProbeOut() : source->excludedForProbeIn();
}

/// Makes a default @p item that of @p net, in place: a bus may have thousands of members.
void describe(SignalItem *item, NETWEIR::RtlNet *net, ProbeType type)
{
    item->name = net->fullPathName();
    item->enabled = !hasMark(net, type);
    item->kind = SignalItem::Net;
}

} // namespace

bool isExcluded(NETWEIR::RtlNet *net, ProbeType type)
{
    return hasMark(net, type);
}

bool isExcluded(NETWEIR::RtlNetBus *bus, ProbeType type)
{
    return hasMark(bus, type);
}

SignalItem signalOf(NETWEIR::RtlNet *net, ProbeType type)
{
    SignalItem item;
    describe(&item, net, type);
    return item;
}

SignalItem signalOf(NETWEIR::RtlNetBus *bus, ProbeType type)
{
    SignalItem item;
    item.name = bus->fullBusName();
    item.enabled = !isExcluded(bus, type);
    item.kind = SignalItem::Bus;
    const auto &nets = bus->nets();
    item.members.reserve(nets.size());
    for (NETWEIR::RtlNet *net : nets) {
        item.members.append(SignalItem());
        describe(&item.members.last(), net, type);
        // Saved files and the lists on the screen rely on this kind.
        item.members.last().kind = SignalItem::Bus;
    }
    return item;
}

} // namespace TARN
