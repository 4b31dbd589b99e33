// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDeadlineTimer>

#include <atomic>

namespace NETWEIR::Internal {

/// Thrown by ReadGuard to end a reading. Never leaves readElaboratedXml().
struct ReadingEnded
{
};

/// Bounds the reading of one elaborated design in time and memory, and ends it when it is
/// cancelled.
///
/// What a design holds decides how long its reading takes at many places, deep within loops. Like
/// an allocator, the guard is therefore reached without being handed through: it belongs to the
/// thread that made it, one at a time, and check() without a guard does nothing.
class ReadGuard final
{
public:
    enum Reason { GoesOn, Cancelled, TimedOut, TooLarge };

    /// @p cancelled is null when nobody can cancel.
    ReadGuard(const std::atomic<bool> *cancelled, int timeoutSeconds, qint64 memoryLimit);
    ~ReadGuard();
    ReadGuard(const ReadGuard &) = delete;
    ReadGuard &operator=(const ReadGuard &) = delete;

    Reason reason() const { return m_reason; }

    /// To be called in each round of every loop whose length the design decides; costs next to
    /// nothing most of the time. @p work is how much more than a few instructions or bytes the
    /// round is. Throws ReadingEnded.
    static void check(qint64 work = 1)
    {
        if (s_current && s_current->isDue(work))
            s_current->end();
    }

    /// The same at once, for before and after something that takes long by itself.
    static void checkNow() { check(Interval); }

    /// The same for places that no exception may cross: false when the reading has to end.
    static bool mayGoOn(qint64 work = 1);

    /// What a reading may take, in bytes: a quarter of the memory of the machine, or 1 GB if that
    /// is more.
    static qint64 defaultMemoryLimit();

private:
    static constexpr qint64 Interval = 256;

    bool isDue(qint64 work)
    {
        m_work += work;
        return m_work >= Interval;
    }
    void look();
    void end();

    static thread_local ReadGuard *s_current;

    const std::atomic<bool> *m_cancelled;
    QDeadlineTimer m_deadline;
    qint64 m_memoryLimit;
    qint64 m_memoryBefore;
    qint64 m_work = 0;
    Reason m_reason = GoesOn;
};

} // namespace NETWEIR::Internal
