// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFile>
#include <QProcess>
#include <QStringList>
#include <QTimer>

namespace NETWEIR::Internal {

/// One run of a tool with limits on memory, stack and files. Its process group is killed with this
/// object, after the timeout and at the end of the host.
///
/// Output goes to files in the working folder, so the run needs no event loop.
class ToolProcess final : public QProcess
{
    Q_OBJECT

public:
    enum Result { Succeeded, Failed, Crashed, FileTooLarge, TimedOut, NotStarted };

    explicit ToolProcess(const QString &workingFolder);
    ~ToolProcess() override;

    /// Standard output goes to the file "stdout" of the working folder and errors to "stderr".
    void run(const QString &program, const QStringList &arguments, int timeoutSeconds);

    /// Gives a run that goes on its whole time once more.
    void restartTimeout() { m_timeout.start(); }

    /// Kills the whole group immediately and waits for the end of the process.
    void end();

    bool isRunning() const { return state() != NotRunning; }

    /// The end of a finished run. Failed: the exit code is not 0.
    Result result() const;

    /// False when the standard output is larger than 1 GB.
    bool isOutputReadable() const;
    /// The next piece of the standard output, up to 1 MB and 1 GB in all, also while the process
    /// runs. Empty when it has not written more.
    QByteArray nextOutput();
    /// Removes the file of the standard output to save space.
    void removeOutput();
    /// The beginning of the error output, 16 MB of it.
    QByteArray errorOutput() const;

    /// The limits in bytes.
    static qint64 memoryLimit();
    static qint64 fileSizeLimit();

protected:
    void setupChildProcess() override;

private:
    void killGroup();
    QString standardOutputPath() const;
    QString errorOutputPath() const;

    QTimer m_timeout;
    QFile m_output; ///< Open since nextOutput() was called first.
    qint64 m_group = 0;
    bool m_timedOut = false;
};

} // namespace NETWEIR::Internal
