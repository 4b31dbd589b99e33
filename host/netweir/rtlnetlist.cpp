// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "rtlnetlist.h"

#include "internal/netliststore.h"

#include <QHash>

namespace NETWEIR {

namespace {

/// Spreads the bits of Qt's hash, so that its low bits serve as a slot number.
quint32 slotHash(const QString &name)
{
    const quint32 hash = qHash(name) * 0x9e3779b1U;
    return hash ^ (hash >> 15);
}

} // namespace

void RtlNetlist::Private::indexNets()
{
    std::size_t size = 16;
    while (size < nets.size() * 2)
        size *= 2;
    slots.assign(size, 0);

    // In order and without comparing: of two nets with one name the first is found first.
    for (std::size_t i = 0; i < nets.size(); ++i) {
        std::size_t slot = slotHash(nets.at(i)->fullPathName()) & (size - 1);
        while (slots[slot] != 0)
            slot = (slot + 1) & (size - 1);
        slots[slot] = quint32(i + 1);
    }
}

RtlNetlist::RtlNetlist(std::unique_ptr<Private> data)
    : d(std::move(data))
{
}

RtlNetlist::~RtlNetlist() = default;

Hierachy *RtlNetlist::top() const
{
    return d->nodes.at(0);
}

RtlNet *RtlNetlist::findNet(const QString &fullPathName) const
{
    const std::size_t mask = d->slots.size() - 1;
    std::size_t slot = slotHash(fullPathName) & mask;
    while (const quint32 entry = d->slots[slot]) {
        RtlNet *net = d->nets.at(entry - 1);
        if (net->fullPathName() == fullPathName)
            return net;
        slot = (slot + 1) & mask;
    }
    return nullptr;
}

bool RtlNetlist::usesJtagPrimitive() const
{
    return d->usesJtagPrimitive;
}

} // namespace NETWEIR
