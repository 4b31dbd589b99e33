// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <array>
#include <vector>

namespace TARN {

/// Few numbers under each of many keys.
///
/// Under one key are at most Capacity numbers: a key that more of them share finds too much to be
/// of use. So adding and finding take constant time whatever the keys are. Grows in small parts, so
/// that no call takes long. About 16 bytes for each number. Keys count as one when the same 41 bits
/// are made of them, so what is found is a guess.
class NameKeys
{
public:
    static constexpr int Capacity = 16;

    struct Found
    {
        std::array<quint32, Capacity> numbers{};
        int count = 0;

        bool isFull() const { return count == Capacity; }
        const quint32 *begin() const { return numbers.data(); }
        const quint32 *end() const { return numbers.data() + count; }
    };

    NameKeys();

    /// False when there are Capacity numbers under the key already.
    bool add(quint64 key, quint32 number);

    /// The numbers under @p key, in the order in which they were added.
    Found find(quint64 key) const;

private:
    struct Slot
    {
        quint32 tag = 0;
        quint32 number = 0; ///< Plus one; 0 for a free slot.
    };
    struct Part
    {
        std::vector<Slot> table;
        std::size_t used = 0;
    };

    static constexpr unsigned PartBits = 9;
    static constexpr std::size_t FirstSize = 16;

    static std::size_t partOf(quint64 key) { return std::size_t(key >> (64 - PartBits)); }
    static void grow(Part *part);

    std::vector<Part> m_parts;
};

} // namespace TARN
