// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "rtlnetlist.h"

#include <netweir/internal/store/netliststore.h>

#include <QHash>

namespace NETWEIR {

namespace {

/// The slot where the search for a name with @p hash begins in a table of 2^bits slots. The
/// multiplication distributes names that differ only in a digit, as most do.
std::size_t firstSlot(quint32 hash, unsigned bits)
{
    return std::size_t((quint64(hash) * 0x9e3779b97f4a7c15U) >> (64 - bits));
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
        const quint32 hash = qHash(nets.at(i)->fullPathName());
        std::size_t slot = firstSlot(hash, slotBits);
        while (slots[slot] != 0)
            slot = (slot + 1) & mask;
        slots[slot] = (hash & ~quint32(mask)) | quint32(i + 1);
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
    const quint32 hash = qHash(fullPathName);
    std::size_t slot = firstSlot(hash, d->slotBits);
    for (; const quint32 entry = d->slots[slot]; slot = (slot + 1) & mask) {
        if (((entry ^ hash) & ~quint32(mask)) != 0)
            continue;
        RtlNet *net = d->nets.at((entry & mask) - 1);
        if (net->fullPathName() == fullPathName)
            return net;
    }
    return nullptr;
}

bool RtlNetlist::usesJtagPrimitive() const
{
    return d->usesJtagPrimitive;
}

} // namespace NETWEIR
