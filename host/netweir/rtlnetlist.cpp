// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "rtlnetlist.h"

#include <netweir/internal/store/netliststore.h>
#include <netweir/internal/store/netname.h>

namespace NETWEIR {

namespace {

/// The slot where the search for a name with @p hash begins in a table of 2^bits slots. The
/// multiplication distributes names that differ only in a digit, as most do.
std::size_t firstSlot(quint32 hash, unsigned bits)
{
    return std::size_t((quint64(hash) * 0x9e3779b97f4a7c15U) >> (64 - bits));
}

/// Where the identifier ends that begins at @p begin and has no point or bracket in it.
int plainEnd(const QString &name, int begin)
{
    int end = begin;
    while (end < name.size() && name[end] != QLatin1Char('.') && name[end] != QLatin1Char('['))
        ++end;
    return end;
}

/// @p lengths are those of the first identifiers; the others have no point or bracket in them.
QVector<NameStep> stepsOf(const QString &name, const std::vector<int> &lengths)
{
    QVector<NameStep> steps;
    std::size_t number = 0;
    for (int begin = 0; begin < name.size(); ++number) {
        const int end = number < lengths.size() ? begin + lengths[number] : plainEnd(name, begin);
        const int point = name.indexOf(QLatin1Char('.'), end);
        const int next = point < 0 ? name.size() : point;
        steps.append({name.mid(begin, end - begin), name.mid(end, next - end)});
        begin = next + 1;
    }
    return steps;
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
        const quint32 hash = nets.at(i)->parts().hash();
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
    const quint32 hash = Internal::textHash(fullPathName);
    std::size_t slot = firstSlot(hash, d->slotBits);
    for (; const quint32 entry = d->slots[slot]; slot = (slot + 1) & mask) {
        if (((entry ^ hash) & ~quint32(mask)) != 0)
            continue;
        RtlNet *net = d->nets.at((entry & mask) - 1);
        if (net->parts().isFull(fullPathName))
            return net;
    }
    return nullptr;
}

QVector<NameStep> RtlNetlist::nameStepsOf(const RtlNet *net) const
{
    return stepsOf(net->name(), d->nameShapes[net->m_nameShape]);
}

QVector<NameStep> RtlNetlist::nameStepsOf(const RtlNetBus *bus) const
{
    return stepsOf(bus->BusName(), d->nameShapes[bus->m_nameShape]);
}

QVector<NameStep> RtlNetlist::nameStepsOf(const Hierachy *node) const
{
    return stepsOf(node->instName(), d->nameShapes[node->m_nameShape]);
}

bool RtlNetlist::usesJtagPrimitive() const
{
    return d->usesJtagPrimitive;
}

} // namespace NETWEIR
