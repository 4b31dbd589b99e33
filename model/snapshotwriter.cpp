// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "snapshotwriter.h"

namespace TARN {

SnapshotWriter::SnapshotWriter(const ConfigSnapshot &snapshot)
    : m_snapshot(snapshot)
{
}

bool SnapshotWriter::step(std::chrono::microseconds budget)
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + budget;
    while (!m_finished) {
        m_finished = !add();
        if (Clock::now() >= end)
            break;
    }
    return m_finished;
}

void SnapshotWriter::finish()
{
    while (!m_finished)
        m_finished = !add();
}

/// Adds the next piece. False when there is none, and after an error.
bool SnapshotWriter::add()
{
    if (m_core == m_snapshot.cores.size()) {
        m_content = m_document.finish();
        return false;
    }
    const ConfigSnapshot::Core &core = m_snapshot.cores.at(m_core);
    if (m_port < 0) {
        m_port = 0;
        return beginCore(core);
    }
    if (m_port < core.content->probeIns.size() + core.content->probeOuts.size())
        return addPort(*core.content);
    m_document.endCore();
    ++m_core;
    m_port = -1;
    return true;
}

bool SnapshotWriter::beginCore(const ConfigSnapshot::Core &core)
{
    const CoreSnapshot &content = *core.content;
    return m_document.beginCore(core.index, content.module, content.userClock,
                                content.syncUserClock);
}

bool SnapshotWriter::addPort(const CoreSnapshot &core)
{
    const int position = m_port++;
    if (position < core.probeIns.size()) {
        const PortSnapshot &in = *core.probeIns.at(position);
        return m_document.addProbeIn(in.index, in.signals);
    }
    const PortSnapshot &out = *core.probeOuts.at(position - core.probeIns.size());
    return m_document.addProbeOut(out.index, out.signals, out.initialValue);
}

} // namespace TARN
