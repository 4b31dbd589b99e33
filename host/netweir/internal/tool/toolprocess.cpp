// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "toolprocess.h"

#include <files/regularfile.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <csignal>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace NETWEIR::Internal {

namespace {

constexpr rlim_t StackLimit = 256 * 1024 * 1024;
constexpr rlim_t LargestFile = 2000 * 1024 * 1024; ///< Larger files cannot be read.
constexpr qint64 MostOutput = 1024 * 1024 * 1024;  ///< In bytes.
constexpr qint64 LargestPiece = 1024 * 1024;       ///< In bytes.
constexpr qint64 MostMessages = 16 * 1024 * 1024;  ///< In bytes.
constexpr int KillTimeout = 1000;

/// Sets the soft limit as far as the hard limit allows. Safe between fork and exec.
void setLimit(decltype(RLIMIT_STACK) resource, rlim_t value)
{
    rlimit limit;
    if (getrlimit(resource, &limit) != 0)
        return;
    limit.rlim_cur = limit.rlim_max == RLIM_INFINITY ? value : qMin(value, limit.rlim_max);
    setrlimit(resource, &limit);
}

/// The first @p limit bytes of a file.
QByteArray readOutput(const QString &path, qint64 limit)
{
    QFile file;
    QString error;
    if (Files::openRegularFile(path, &file, &error) != Files::Access::Granted)
        return {};
    // The limit is far more than most files have, and reading takes that memory first.
    return file.read(qMin(limit, file.size()));
}

} // namespace

ToolProcess::ToolProcess(const QString &workingFolder)
{
    setWorkingDirectory(workingFolder);
    setStandardInputFile(nullDevice());
    setStandardOutputFile(standardOutputPath());
    setStandardErrorFile(errorOutputPath());
    m_timeout.setSingleShot(true);
    connect(&m_timeout, &QTimer::timeout, this, [this] {
        m_timedOut = true;
        killGroup();
        kill();
    });
    connect(this, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this, [this] {
        m_timeout.stop();
        killGroup(); // Processes that the tool may have started.
    });
}

ToolProcess::~ToolProcess()
{
    end();
}

void ToolProcess::run(const QString &program, const QStringList &arguments, int timeoutSeconds)
{
    m_timedOut = false;
    // An earlier run may have left something there: writing to a pipe would wait for its reader.
    QFile::remove(standardOutputPath());
    QFile::remove(errorOutputPath());
    start(program, arguments);
    m_group = processId();
    m_timeout.start(qMin(timeoutSeconds, 1000000) * 1000);
}

void ToolProcess::end()
{
    if (!isRunning())
        return;
    killGroup();
    kill(); // The child creates the group and may not have done so yet.
    waitForFinished(KillTimeout);
}

void ToolProcess::killGroup()
{
    if (m_group > 0)
        ::kill(pid_t(-m_group), SIGKILL);
}

ToolProcess::Result ToolProcess::result() const
{
    if (m_timedOut)
        return TimedOut;
    if (error() == FailedToStart)
        return NotStarted;
    if (exitStatus() == CrashExit)
        return exitCode() == SIGXFSZ ? FileTooLarge : Crashed; // The code is the signal.
    return exitCode() == 0 ? Succeeded : Failed;
}

bool ToolProcess::isOutputReadable() const
{
    return QFileInfo(standardOutputPath()).size() <= MostOutput;
}

QByteArray ToolProcess::nextOutput()
{
    QString error;
    if (!m_output.isOpen() &&
        Files::openRegularFile(standardOutputPath(), &m_output, &error) != Files::Access::Granted)
        return {};
    return m_output.read(qMin(LargestPiece, MostOutput - m_output.pos()));
}

void ToolProcess::removeOutput()
{
    m_output.close();
    QFile::remove(standardOutputPath());
}

QByteArray ToolProcess::errorOutput() const
{
    return readOutput(errorOutputPath(), MostMessages);
}

QString ToolProcess::standardOutputPath() const
{
    return QDir(workingDirectory()).filePath(QStringLiteral("stdout"));
}

QString ToolProcess::errorOutputPath() const
{
    return QDir(workingDirectory()).filePath(QStringLiteral("stderr"));
}

qint64 ToolProcess::fileSizeLimit()
{
    rlimit limit;
    const bool isKnown = getrlimit(RLIMIT_FSIZE, &limit) == 0;
    return qint64(isKnown ? qMin(LargestFile, limit.rlim_max) : LargestFile);
}

qint64 ToolProcess::memoryLimit()
{
    constexpr qint64 Least = 2LL * 1024 * 1024 * 1024;
    const qint64 physical = qint64(sysconf(_SC_PHYS_PAGES)) * sysconf(_SC_PAGESIZE);
    return qMax(Least, physical / 4 * 3);
}

void ToolProcess::setupChildProcess()
{
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    setLimit(RLIMIT_AS, rlim_t(memoryLimit()));
    setLimit(RLIMIT_STACK, StackLimit);
    setLimit(RLIMIT_CORE, 0);
    setLimit(RLIMIT_DATA, RLIM_INFINITY);
    // The tool stops at this limit instead of continuing with an incomplete file.
    setLimit(RLIMIT_FSIZE, LargestFile);
    std::signal(SIGXFSZ, SIG_DFL);
}

} // namespace NETWEIR::Internal
