// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "namekeys.h"

namespace TARN {

namespace {

/// The slot of a tag is found from the tag alone, so that a table can grow without the keys.
std::size_t slotOf(quint32 tag, std::size_t size)
{
    return std::size_t((quint64(tag) * 0x9e3779b97f4a7c15U) >> 32) & (size - 1);
}

quint32 tagOf(quint64 key)
{
    return quint32(key ^ (key >> 23));
}

} // namespace

NameKeys::NameKeys()
    : m_parts(std::size_t(1) << PartBits)
{
}

/// The numbers of a tag keep their order: they stand in it from the first slot on, and the walk
/// begins at a slot that no run of slots crosses.
void NameKeys::grow(Part *part)
{
    if (part->table.empty()) {
        part->table.resize(FirstSize);
        return;
    }
    const std::size_t size = part->table.size();
    std::vector<Slot> larger(size * 2);
    std::size_t start = 0;
    while (part->table[start].number != 0)
        ++start;
    for (std::size_t i = 1; i <= size; ++i) {
        const Slot &slot = part->table[(start + i) & (size - 1)];
        if (slot.number == 0)
            continue;
        std::size_t at = slotOf(slot.tag, larger.size());
        while (larger[at].number != 0)
            at = (at + 1) & (larger.size() - 1);
        larger[at] = slot;
    }
    part->table.swap(larger);
}

bool NameKeys::add(quint64 key, quint32 number)
{
    Part &part = m_parts[partOf(key)];
    if ((part.used + 1) * 3 > part.table.size() * 2)
        grow(&part);
    const quint32 tag = tagOf(key);
    int same = 0;
    std::size_t at = slotOf(tag, part.table.size());
    for (; part.table[at].number != 0; at = (at + 1) & (part.table.size() - 1)) {
        if (part.table[at].tag == tag && ++same == Capacity)
            return false;
    }
    part.table[at] = {tag, number + 1};
    ++part.used;
    return true;
}

NameKeys::Found NameKeys::find(quint64 key) const
{
    Found found;
    const Part &part = m_parts[partOf(key)];
    if (part.table.empty())
        return found;
    const quint32 tag = tagOf(key);
    for (std::size_t at = slotOf(tag, part.table.size()); part.table[at].number != 0;
         at = (at + 1) & (part.table.size() - 1)) {
        const Slot &slot = part.table[at];
        if (slot.tag == tag && !found.isFull())
            found.numbers[std::size_t(found.count++)] = slot.number - 1;
    }
    return found;
}

} // namespace TARN
