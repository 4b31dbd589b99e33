// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "toolprocess.h"

namespace NETWEIR::Internal {

class ExtractionProgress;

/// One run of an elaborator and how it ended.
class ToolRun
{
public:
    /// Starts @p program in @p folder.
    ToolRun(const QString &program, const QStringList &arguments, const QString &folder,
            int timeoutSeconds);
    ToolRun(const ToolRun &) = delete;
    ToolRun &operator=(const ToolRun &) = delete;
    virtual ~ToolRun() = default;

    /// Waits for the end, at most @p limit milliseconds unless that is negative, and reads the
    /// messages. Cancel stops the run.
    void wait(ExtractionProgress *progress, int limit = -1);
    bool isOver() const { return m_isOver; }
    /// The process runs, as far as the event loop knows.
    bool isRunning() const { return m_process.isRunning(); }

    // Of a run that is over.

    bool succeeded() const { return result() == ToolProcess::Succeeded; }

    /// The program failed with an exit code, and its messages say why.
    bool failed() const { return result() == ToolProcess::Failed && !m_isOutOfMemory; }

    /// The run exceeded a limit or did not start, so another run would not help.
    bool hitLimit() const;

    /// The message for users that says why the run has no result. @p phase names the purpose of the
    /// run as the subject of the sentence.
    QString failure(const QString &phase) const;

    bool isOutputReadable() const { return m_process.isOutputReadable(); }
    void removeOutput() { m_process.removeOutput(); }

    // Of any run.

    /// The next piece of the standard output. Empty when there is no more, or not yet.
    QByteArray nextOutput() { return m_process.nextOutput(); }

    /// Gives a run that goes on its whole time once more.
    void restartTimeout() { m_process.restartTimeout(); }

    /// Stops a run whose result is complete.
    void stop();

    /// The processor time of a run that is not over, in milliseconds; 0 when it is not known.
    qint64 usedMilliseconds() const;

protected:
    /// Reads the error output of a run that is over and was not cancelled.
    virtual void readMessages(const QByteArray &errorOutput) = 0;

private:
    ToolProcess::Result result() const { return m_process.result(); }

    QString m_program;
    int m_timeoutSeconds;
    ToolProcess m_process;
    bool m_isOver = false;
    bool m_isOutOfMemory = false;
};

} // namespace NETWEIR::Internal
