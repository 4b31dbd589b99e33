// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QStringList>
#include <QVector>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <limits>
#include <memory>
#include <mutex>

class QThread;

namespace NETWEIR::Internal {

class WorkFolder;

/// Input files of a tool that starts before their contents are known.
///
/// Each file is a named pipe at first, so the tool waits when it opens one that is not known yet. A
/// thread gives it the contents in the order of the files, and puts a regular file in place of each
/// pipe for whoever opens it later.
class PipedFiles
{
public:
    /// Makes the pipes in @p folder, which must outlive this object.
    PipedFiles(const WorkFolder &folder, const QStringList &names);
    /// The tool must have ended before.
    ~PipedFiles();
    PipedFiles(const PipedFiles &) = delete;
    PipedFiles &operator=(const PipedFiles &) = delete;

    /// False when a pipe cannot be made or a file cannot be written. Then the tool may wait for
    /// ever, and what it has read is not as it should be.
    bool isGood() const { return m_isGood; }

    /// The content of the next file.
    void append(const QByteArray &content);

    /// Lets the tool get nothing but the files that it may have got already. Returns their number.
    int hold();

    /// After hold(), the contents of all other files. False when the tool does not take the files
    /// in their order, or when one cannot be written: it may wait for ever then.
    bool complete(const QVector<QByteArray> &contents);

private:
    void start(std::unique_ptr<QThread> *thread, const std::function<void()> &task);
    void run();
    void join(QThread *thread, int file) const;
    void fill(int file, const QByteArray &content);
    bool writeBeside(int file, const QByteArray &content) const;
    bool putInPlace(int file) const;
    bool isWaitedFor(int file) const;
    QByteArray pathOf(int file) const;

    const WorkFolder &m_folder;
    const QStringList m_names;
    std::atomic<bool> m_isGood{true};
    std::atomic<bool> m_isEnding{false};
    std::mutex m_mutex;
    std::condition_variable m_change;
    QVector<QByteArray> m_contents; ///< Of the first files.
    int m_begun = 0;                ///< Number of files that the thread fills or has filled.
    int m_end = std::numeric_limits<int>::max(); ///< The first file that it must not fill.
    std::unique_ptr<QThread> m_thread;
    std::unique_ptr<QThread> m_lastThread; ///< Fills the file m_end, since complete().
};

} // namespace NETWEIR::Internal
