// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "rtlnetlist.h"

#include <netweir/internal/store/netliststore.h>

#include <QHash>

namespace NETWEIR {

namespace {

/// The slot where the search for @p name begins in a table of 2^bits slots. The multiplication
/// distributes names that differ only in a digit, as most do.
std::size_t firstSlot(const QString &name, unsigned bits)
{
    return std::size_t((quint64(qHash(name)) * 0x9e3779b97f4a7c15U) >> (64 - bits));
}

} // namespace

void RtlNetlist::Private::indexNets()
{
    slotBits = 4;
    while (std::size_t(1) << slotBits < nets.size() * 2)
        ++slotBits;
    slots.assign(std::size_t(1) << slotBits, 0);
    const std::size_t mask = slots.size() - 1;

    // Inserted in order and without comparison, so the first of two nets with the same name is
    // found.
    for (std::size_t i = 0; i < nets.size(); ++i) {
        std::size_t slot = firstSlot(nets.at(i)->fullPathName(), slotBits);
        while (slots[slot] != 0)
            slot = (slot + 1) & mask;
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
    if (d->slots.empty())
        d->indexNets();
    const std::size_t mask = d->slots.size() - 1;
    std::size_t slot = firstSlot(fullPathName, d->slotBits);
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
