// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configlines.h"

#include <cstddef>

namespace TARN {

namespace {

/// The element at @p position; null when there is none.
template <typename Element>
const Element *at(const std::vector<Element> &list, int position)
{
    const bool exists = position >= 0 && std::size_t(position) < list.size();
    return exists ? &list[std::size_t(position)] : nullptr;
}

int valueAt(const std::vector<int> &lines, int position)
{
    const int *line = at(lines, position);
    return line ? *line : 0;
}

} // namespace

std::vector<ConfigLines::Port> &ConfigLines::portsOf(Core &core, ProbeType type)
{
    return type == ProbeTypeOut ? core.probeOuts : core.probeIns;
}

std::vector<std::vector<int>> &ConfigLines::lastSignals()
{
    return portsOf(m_cores.back(), m_lastType).back().signalLines;
}

void ConfigLines::addCore(int line)
{
    m_cores.push_back({line, {}, {}});
}

void ConfigLines::addPort(ProbeType type, int line)
{
    m_lastType = type;
    portsOf(m_cores.back(), type).push_back({line, {}});
}

void ConfigLines::addSignal(int line)
{
    lastSignals().push_back({line});
}

void ConfigLines::addBit(int line)
{
    lastSignals().back().push_back(line);
}

int ConfigLines::lineOf(int core, ProbeType type, int port, int signal, int bit) const
{
    const Core *ofCore = at(m_cores, core);
    if (!ofCore || port == -1)
        return ofCore ? ofCore->line : 0;
    const Port *ofPort = at(type == ProbeTypeOut ? ofCore->probeOuts : ofCore->probeIns, port);
    if (!ofPort || signal == -1)
        return ofPort ? ofPort->line : 0;
    const std::vector<int> *ofSignal = at(ofPort->signalLines, signal);
    return ofSignal ? valueAt(*ofSignal, bit + 1) : 0;
}

} // namespace TARN
