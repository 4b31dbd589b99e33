// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tarncore.h"

#include <vector>

namespace TARN {

/// On which line of its file each core, port, signal and bit of a configuration begins.
///
/// The reader of the file fills it, in the order of the file, so that lines and cores are always of
/// the same content. Takes 4 bytes per bit and 8 per signal.
class ConfigLines
{
public:
    // For the reader. What is added belongs to what was added last on the level above.

    void addCore(int line);
    void addPort(ProbeType type, int line);
    void addSignal(int line);
    void addBit(int line);

    /// The line, from 1, on which the tag of that element begins. All numbers are positions in
    /// lists, from 0. -1 for the port means the core; for the signal, the port; for the bit, the
    /// signal. 0 when there is no such place.
    int lineOf(int core, ProbeType type, int port, int signal, int bit) const;

private:
    struct Port
    {
        int line;
        std::vector<int> lines;      ///< Of each signal its own, then those of its bits.
        std::vector<int> firstLines; ///< Of each signal the position in lines.
    };

    struct Core
    {
        int line;
        std::vector<Port> probeIns;
        std::vector<Port> probeOuts;
    };

    static std::vector<Port> &portsOf(Core &core, ProbeType type);
    static int lineIn(const Port &port, int signal, int bit);
    Port &lastPort();

    std::vector<Core> m_cores;
    ProbeType m_lastType = ProbeTypeIn; ///< Kind of the port added last.
};

} // namespace TARN
