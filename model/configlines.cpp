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

} // namespace

std::vector<ConfigLines::Port> &ConfigLines::portsOf(Core &core, ProbeType type)
{
    return type == ProbeTypeOut ? core.probeOuts : core.probeIns;
}

ConfigLines::Port &ConfigLines::lastPort()
{
    return portsOf(m_cores.back(), m_lastType).back();
}

void ConfigLines::addCore(int line)
{
    m_cores.push_back({line, {}, {}});
}

void ConfigLines::addPort(ProbeType type, int line)
{
    m_lastType = type;
    portsOf(m_cores.back(), type).push_back({line, {}, {}});
}

void ConfigLines::addSignal(int line)
{
    Port &port = lastPort();
    port.firstLines.push_back(int(port.lines.size()));
    port.lines.push_back(line);
}

void ConfigLines::addBit(int line)
{
    lastPort().lines.push_back(line);
}

int ConfigLines::lineOf(int core, ProbeType type, int port, int signal, int bit) const
{
    const Core *ofCore = at(m_cores, core);
    if (!ofCore || port == -1)
        return ofCore ? ofCore->line : 0;
    const Port *ofPort = at(type == ProbeTypeOut ? ofCore->probeOuts : ofCore->probeIns, port);
    if (!ofPort || signal == -1)
        return ofPort ? ofPort->line : 0;
    return lineIn(*ofPort, signal, bit);
}

int ConfigLines::lineIn(const Port &port, int signal, int bit)
{
    const int *first = at(port.firstLines, signal);
    if (!first)
        return 0;
    const int *next = at(port.firstLines, signal + 1);
    const int bits = (next ? *next : int(port.lines.size())) - *first - 1;
    const bool exists = bit >= -1 && bit < bits;
    return exists ? port.lines[std::size_t(*first + 1 + bit)] : 0;
}

} // namespace TARN
