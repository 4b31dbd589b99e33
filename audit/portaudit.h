// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "finding.h"

#include <vector>

namespace TARN {

class DesignNames;
struct PortSnapshot;

/// A bit within a port, in numbers as in Place.
struct BitPlace
{
    int signal = -1;
    int bit = -1;
};

/// The findings of one port that do not depend on any other port, in compact form.
class PortAudit
{
public:
    struct Entry
    {
        Rule rule;
        BitPlace place;
        // Of Repeated: the further places, as a range of furtherPlace().
        int firstFurther = 0;
        int furtherCount = 0;
    };

    /// Looks at the @p port; @p names may be null. Takes n log n time in the bits.
    void run(const PortSnapshot &port, ProbeType type, const DesignNames *names);

    void leaveNotesOut();

    /// Signal by signal, first those of the whole port. Of one signal in the order of the rules.
    const std::vector<Entry> &entries() const { return m_entries; }

    BitPlace furtherPlace(int i) const { return m_further[std::size_t(i)]; }

private:
    void checkPort(const PortSnapshot &port, ProbeType type);
    void checkSignals(const PortSnapshot &port, ProbeType type, const DesignNames &names);
    void checkRepeats(const PortSnapshot &port);

    std::vector<Entry> m_entries;
    std::vector<BitPlace> m_further;
};

/// Number of bits that @p initialValue, "0x" and hexadecimal digits, needs: its digits without
/// leading zeros. 0 for an empty text and for one that is no such value.
int significantBits(const QString &initialValue);

} // namespace TARN
