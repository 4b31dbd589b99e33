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
#include <poll.h>
#include <unistd.h>

namespace NETWEIR::Internal {

namespace {

constexpr int LookInterval = 50; ///< In milliseconds.

/// A write to a pipe whose reader has gone must not end the host.
void blockPipeSignal()
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
}

/// Writes until the end of the reader or of @p isEnding.
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
    m_thread.reset(QThread::create([this] { run(); }));
    m_thread->start();
}

/// The thread may wait for a reader of its pipe, so there is one until it has ended.
PipedFiles::~PipedFiles()
{
    if (!m_thread)
        return;
    int begun = 0;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isEnding = true;
        begun = m_begun;
    }
    m_change.notify_all();
    int reader = -1;
    do {
        if (reader < 0 && begun > 0)
            reader = ::open(pathOf(begun - 1).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    } while (!m_thread->wait(LookInterval));
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
    return m_begun;
}

/// The thread fills the next file too, because the tool may be waiting for it already. There is no
/// moment at which a pipe that nobody waits for could be replaced, so the tool must not open the
/// others yet.
bool PipedFiles::complete(const QVector<QByteArray> &contents)
{
    for (int i = 1; i < contents.size(); ++i) {
        QString error;
        const int file = m_end + i;
        if (isWaitedFor(file) || !m_folder.replace(m_names[file], contents[i], &error))
            m_isGood = false;
    }
    if (!contents.isEmpty() && m_isGood) {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            ++m_end;
        }
        append(contents.first());
    }
    return m_isGood;
}

void PipedFiles::run()
{
    blockPipeSignal();
    for (int file = 0; file < m_names.size() && m_isGood; ++file) {
        QByteArray content;
        {
            std::unique_lock<std::mutex> lock(m_mutex);
            m_change.wait(lock, [this, file] {
                return m_isEnding || (file < m_contents.size() && file < m_end);
            });
            if (m_isEnding)
                return;
            m_begun = file + 1;
            content = m_contents[file];
        }
        fill(file, content);
    }
}

/// The regular file comes before the content, because a tool that closes the pipe may open the file
/// again.
void PipedFiles::fill(int file, const QByteArray &content)
{
    const int pipe = ::open(pathOf(file).constData(), O_WRONLY | O_CLOEXEC); // Waits for the tool.
    QString error;
    if (pipe < 0 || m_isEnding || !m_folder.replace(m_names[file], content, &error))
        m_isGood = false;
    else
        writeToPipe(pipe, content, m_isEnding);
    if (pipe >= 0)
        ::close(pipe);
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
