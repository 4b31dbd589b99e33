// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QProcess>
#include <QStringList>
#include <QTimer>

namespace NETWEIR::Internal {

/// Path of the elaborator: the environment variable TARN_VERILATOR, else "verilator_bin" on the
/// PATH, else where it was when this library was built. Null when there is none; @p error then says
/// what to do.
QString findElaborator(QString *error);

/// One run of the elaborator, with limits on memory, stack and files and in a process group of its
/// own, which dies with this object, after the timeout and with the host.
///
/// Output goes to files of the working folder, so that no event loop is needed while it runs.
class ToolProcess final : public QProcess
{
    Q_OBJECT

public:
    enum Result { Succeeded, Failed, Crashed, OutOfMemory, FileTooLarge, TimedOut, NotStarted };

    /// The output that is read, in bytes.
    static constexpr qint64 MostOutput = 1024 * 1024 * 1024;

    explicit ToolProcess(const QString &workingFolder);
    ~ToolProcess() override;

    /// Standard output goes to the file "stdout" of the working folder and errors to "stderr".
    void run(const QString &program, const QStringList &arguments, int timeoutSeconds);

    /// Kills the whole group at once and waits until the process is gone.
    void end();

    bool isRunning() const { return state() != NotRunning; }

    /// Of a run that is over. Failed: the exit code is not 0.
    Result result() const;

    QString standardOutputPath() const;
    /// Empty when it is larger than MostOutput bytes.
    QByteArray standardOutput() const;
    QByteArray errorOutput() const;

    /// The limits in bytes.
    static qint64 memoryLimit();
    static qint64 fileSizeLimit();

protected:
    void setupChildProcess() override;

private:
    void killGroup();
    QString errorOutputPath() const;
    static QByteArray read(const QString &path);

    QTimer m_timeout;
    qint64 m_group = 0;
    bool m_timedOut = false;
};

} // namespace NETWEIR::Internal
