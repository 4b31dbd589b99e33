// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "pipedfiles.h"

#include "workfolder.h"

#include <QFile>
#include <QThread>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <new>
#include <poll.h>
#include <unistd.h>

namespace NETWEIR::Internal {

namespace {

/// The suffix of a regular file beside its pipe.
const char Complete[] = ".complete";

constexpr int LookInterval = 50; ///< In milliseconds.

/// A write to a pipe whose reader has gone must not end the host.
void blockPipeSignal()
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
}

/// Waits until the tool reads the pipe. A signal of the host is no reason to give up.
int openForTool(const QByteArray &path, const std::atomic<bool> &isEnding)
{
    int pipe = -1;
    do {
        pipe = ::open(path.constData(), O_WRONLY | O_CLOEXEC);
    } while (pipe < 0 && errno == EINTR && !isEnding);
    return pipe;
}

/// Writes until the end of the reader or until @p isEnding.
void writeToPipe(int pipe, const QByteArray &content, const std::atomic<bool> &isEnding)
{
    ::fcntl(pipe, F_SETFL, O_NONBLOCK);
    for (qint64 written = 0; written < content.size() && !isEnding;) {
        const ssize_t size =
            ::write(pipe, content.constData() + written, size_t(content.size() - written));
        if (size >= 0) {
            written += size;
        } else if (errno == EAGAIN) {
            pollfd room{pipe, POLLOUT, 0};
            ::poll(&room, 1, LookInterval);
        } else if (errno != EINTR) {
            return;
        }
    }
}

} // namespace

PipedFiles::PipedFiles(const WorkFolder &folder, const QStringList &names)
    : m_folder(folder)
    , m_names(names)
    , m_isGood(std::all_of(names.begin(), names.end(),
                           [&folder](const QString &name) { return folder.makePipe(name); }))
{
    if (!m_isGood)
        return;
    start(&m_thread, [this] { run(); });
}

PipedFiles::~PipedFiles()
{
    int begun = 0;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isEnding = true;
        begun = m_begun;
    }
    m_change.notify_all();
    join(m_thread.get(), begun - 1);
    join(m_lastThread.get(), m_end);
}

/// The thread may wait for a reader of its pipe, so there is one until it has ended.
void PipedFiles::join(QThread *thread, int file) const
{
    int reader = -1;
    for (unsigned long interval = 0; thread && !thread->wait(interval); interval = LookInterval) {
        if (reader < 0 && file >= 0)
            reader = ::open(pathOf(file).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    }
    if (reader >= 0)
        ::close(reader);
}

void PipedFiles::append(const QByteArray &content)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_contents.append(content);
    }
    m_change.notify_all();
}

int PipedFiles::hold()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_end = m_begun;
    m_contents.resize(m_begun);
    m_change.notify_all();
    return m_begun;
}

/// The next file stays a pipe, because the tool may begin to wait for it at any moment. The tool
/// has no reason to open the others yet, so they become regular files.
bool PipedFiles::complete(const QVector<QByteArray> &contents)
{
    for (int i = 1; i < contents.size() && m_isGood; ++i) {
        const int file = m_end + i;
        if (!writeBeside(file, contents[i]) || isWaitedFor(file) || !putInPlace(file))
            m_isGood = false;
    }
    if (!contents.isEmpty() && m_isGood) {
        start(&m_lastThread, [this, content = contents.first()] { fill(m_end, content); });
    }
    return m_isGood;
}

/// The system may have no thread or no memory left.
void PipedFiles::start(std::unique_ptr<QThread> *thread, const std::function<void()> &task)
{
    thread->reset(QThread::create([this, task] {
        blockPipeSignal();
        try {
            task();
        } catch (const std::bad_alloc &) {
            m_isGood = false;
        }
    }));
    (*thread)->start();
    if (!(*thread)->isRunning() && !(*thread)->isFinished())
        m_isGood = false;
}

void PipedFiles::run()
{
    for (int file = 0; file < m_names.size() && m_isGood; ++file) {
        QByteArray content;
        {
            std::unique_lock<std::mutex> lock(m_mutex);
            m_change.wait(lock, [this, file] {
                return m_isEnding || file == m_end || file < m_contents.size();
            });
            if (m_isEnding || file == m_end)
                return;
            m_begun = file + 1;
            content = m_contents[file];
        }
        fill(file, content);
    }
}

/// The regular file is in place before the tool gets the content, because a tool that closes the
/// pipe may open the file again. If that fails, the tool finds the file empty, and then none,
/// rather than waiting for it.
void PipedFiles::fill(int file, const QByteArray &content)
{
    if (!writeBeside(file, content))
        m_isGood = false;
    const QByteArray path = pathOf(file);
    const int pipe = openForTool(path, m_isEnding);
    if (pipe >= 0 && !m_isEnding && m_isGood && putInPlace(file)) {
        writeToPipe(pipe, content, m_isEnding);
    } else {
        m_isGood = false;
        ::unlink(path.constData());
    }
    if (pipe >= 0)
        ::close(pipe);
}

bool PipedFiles::writeBeside(int file, const QByteArray &content) const
{
    QString error;
    return m_folder.write(m_names[file] + QLatin1String(Complete), content, &error);
}

/// Who opens the file meets the pipe or the whole file.
bool PipedFiles::putInPlace(int file) const
{
    return m_folder.rename(m_names[file] + QLatin1String(Complete), m_names[file]);
}

bool PipedFiles::isWaitedFor(int file) const
{
    const int pipe = ::open(pathOf(file).constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    if (pipe >= 0)
        ::close(pipe);
    return pipe >= 0;
}

QByteArray PipedFiles::pathOf(int file) const
{
    return QFile::encodeName(m_folder.path(m_names[file]));
}

} // namespace NETWEIR::Internal
