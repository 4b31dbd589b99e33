// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "configdocument.h"
#include "configsnapshot.h"

#include <QByteArray>
#include <QString>

#include <chrono>

namespace TARN {

/// Turns a snapshot into the content of a configuration file, in slices: the same bytes as
/// ConfigWriter gives for the cores.
class SnapshotWriter
{
public:
    explicit SnapshotWriter(const ConfigSnapshot &snapshot);

    /// Goes on for about @p budget, at least by one port. True at the end.
    bool step(std::chrono::microseconds budget);
    /// Goes on to the end.
    void finish();
    bool isFinished() const { return m_finished; }

    /// The whole file, after the end. Null when the snapshot holds something that would not be read
    /// back as it is; errorText() tells what, for the debug stream.
    QByteArray content() const { return m_content; }
    QString errorText() const { return m_document.errorText(); }

private:
    bool add();
    bool addPort(const CoreSnapshot &core);
    bool beginCore(const ConfigSnapshot::Core &core);

    const ConfigSnapshot m_snapshot;
    ConfigDocument m_document;
    int m_core = 0;
    int m_port = -1; ///< Of the Probe In and then the Probe Out ports; -1 before the core.
    bool m_finished = false;
    QByteArray m_content;
};

} // namespace TARN
