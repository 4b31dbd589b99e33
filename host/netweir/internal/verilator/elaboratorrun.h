// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "toolmessages.h"

#include <netweir/internal/tool/toolprocess.h>

#include <QString>
#include <QStringList>
#include <QVector>

namespace NETWEIR::Internal {

class ExtractionProgress;

/// One run of the elaborator's program, as preprocessor or as elaborator, and what came of it.
class ElaboratorRun
{
public:
    /// Starts @p program in @p folder.
    ElaboratorRun(const QString &program, const QStringList &arguments, const QString &folder,
                  int timeoutSeconds);

    /// Waits for the end, at most @p limit milliseconds unless that is negative, and takes the
    /// result. Cancel ends the run.
    void wait(ExtractionProgress *progress, int limit = -1);
    bool isOver() const { return m_isOver; }

    // Of a run that is over.

    bool succeeded() const { return result() == ToolProcess::Succeeded; }

    /// The program ended by itself with an exit code that says so, and its messages tell why.
    bool failed() const { return result() == ToolProcess::Failed && !m_isOutOfMemory; }

    /// The run went beyond a limit or never started: more of the same would not help.
    bool hitLimit() const;

    /// Why the run has no result, for users. @p phase is what it was for, as the subject of a
    /// sentence.
    QString failure(const QString &phase) const;

    const QVector<ToolMessage> &messages() const { return m_messages; }
    int errorCount() const;

    bool isOutputReadable() const { return m_process.isOutputReadable(); }
    QByteArray takeOutput() { return m_process.takeStandardOutput(); }

private:
    ToolProcess::Result result() const { return m_process.result(); }

    QString m_program;
    int m_timeoutSeconds;
    ToolProcess m_process;
    bool m_isOver = false;
    bool m_isOutOfMemory = false;
    QVector<ToolMessage> m_messages;
};

} // namespace NETWEIR::Internal
