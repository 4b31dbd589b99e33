// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDeadlineTimer>
#include <QString>

#include <atomic>
#include <functional>

namespace NETWEIR::Internal {

/// Thrown by ReadGuard to end a reading. Never leaves readWithin().
struct ReadingEnded
{
};

/// Limits the time and memory for reading an elaborated design, and ends the reading on Cancel.
///
/// Many loops, deep in the code, depend on the size of the design. Therefore the guard is not
/// passed as an argument but, like an allocator, belongs to the thread that creates it. A thread
/// has one guard at a time; without a guard check() does nothing.
class ReadGuard final
{
public:
    enum Reason { GoesOn, Cancelled, TimedOut, TooLarge };

    /// @p cancelled is null when there is no way to cancel.
    ReadGuard(const std::atomic<bool> *cancelled, int timeoutSeconds, qint64 memoryLimit);
    ~ReadGuard();
    ReadGuard(const ReadGuard &) = delete;
    ReadGuard &operator=(const ReadGuard &) = delete;

    Reason reason() const { return m_reason; }

    /// Call it in each round of every loop whose length depends on the design; most calls cost next
    /// to nothing. @p work is the size of the round, in units of a few instructions or bytes.
    /// Throws ReadingEnded.
    static void check(qint64 work = 1)
    {
        if (s_current && s_current->isDue(work))
            s_current->end();
    }

    /// Checks at once; for use before and after a long operation.
    static void checkNow()
    {
        if (s_current)
            s_current->checkAll();
    }

    /// For code that no exception may cross: false when the reading has to end.
    static bool mayGoOn(qint64 work = 1);

    /// The memory limit for reading in bytes: a quarter of the memory of the machine, but at least
    /// 1 GB.
    static qint64 defaultMemoryLimit();

    /// The memory limit of this thread's guard, or the default without a guard.
    static qint64 currentMemoryLimit();

private:
    static constexpr qint64 Interval = 256;

    bool isDue(qint64 work)
    {
        m_work += work;
        return m_work >= Interval;
    }
    void look();
    void lookAtMemory();
    void end();
    void checkAll();

    static thread_local ReadGuard *s_current;

    const std::atomic<bool> *m_cancelled;
    QDeadlineTimer m_deadline;
    qint64 m_memoryLimit;
    qint64 m_memoryBefore;
    QDeadlineTimer m_nextMemoryLook; ///< Asking the system takes longer than all else.
    qint64 m_work = 0;
    Reason m_reason = GoesOn;
};

/// The limits of a reading.
struct ReadLimits
{
    /// Reading ends soon after it becomes true. Null when there is no way to cancel.
    const std::atomic<bool> *cancelled = nullptr;
    int timeoutSeconds = 120;
    qint64 memoryLimit = ReadGuard::defaultMemoryLimit(); ///< In bytes.
};

/// Calls @p reading, which may take long and returns whether it succeeded, with a guard. False when
/// it fails or the guard ends it; @p error then says why.
bool readWithin(const ReadLimits &limits, const std::function<bool(QString *error)> &reading,
                QString *error);

} // namespace NETWEIR::Internal
