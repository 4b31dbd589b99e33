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

/// One run of the elaborator program, as preprocessor or as elaborator, and its result.
class ElaboratorRun
{
public:
    /// Starts @p program in @p folder.
    ElaboratorRun(const QString &program, const QStringList &arguments, const QString &folder,
                  int timeoutSeconds);

    /// Waits for the end, at most @p limit milliseconds unless that is negative, and reads the
    /// result. Cancel stops the run.
    void wait(ExtractionProgress *progress, int limit = -1);
    bool isOver() const { return m_isOver; }

    // Of a run that is over.

    bool succeeded() const { return result() == ToolProcess::Succeeded; }

    /// The program failed with an exit code, and its messages say why.
    bool failed() const { return result() == ToolProcess::Failed && !m_isOutOfMemory; }

    /// The run exceeded a limit or did not start, so another run would not help.
    bool hitLimit() const;

    /// The message for users that says why the run has no result. @p phase names the purpose of the
    /// run as the subject of the sentence.
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
