// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "readguard.h"

#include "messages.h"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <new>
#include <unistd.h>

namespace NETWEIR::Internal {

namespace {

constexpr qint64 Megabyte = 1024 * 1024;

/// In this time a program can fill some megabytes.
constexpr int MillisecondsBetweenMemoryLooks = 1;

/// Memory in use by the process, in bytes; 0 when the system does not tell.
qint64 residentMemory()
{
    const int file = ::open("/proc/self/statm", O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return 0;
    char text[128];
    const ssize_t size = ::read(file, text, sizeof(text) - 1);
    ::close(file);
    text[std::max<ssize_t>(size, 0)] = '\0';
    char *afterTotal = nullptr;
    std::strtoll(text, &afterTotal, 10);
    return std::strtoll(afterTotal, nullptr, 10) * sysconf(_SC_PAGESIZE);
}

QString endedText(ReadGuard::Reason reason, const ReadLimits &limits)
{
    switch (reason) {
    case ReadGuard::Cancelled:
        return Text::tr("Reading was cancelled.");
    case ReadGuard::TimedOut:
        return Text::tr(
                   "Reading took longer than %1 seconds and was stopped. Raise the timeout in the "
                   "project's options.")
            .arg(limits.timeoutSeconds);
    case ReadGuard::TooLarge:
        return Text::tr("Reading needs more than %1 MB of memory and was stopped.")
            .arg(limits.memoryLimit / Megabyte);
    case ReadGuard::GoesOn:
        break;
    }
    return {};
}

} // namespace

thread_local ReadGuard *ReadGuard::s_current = nullptr;

ReadGuard::ReadGuard(const std::atomic<bool> *cancelled, int timeoutSeconds, qint64 memoryLimit)
    : m_cancelled(cancelled)
    , m_deadline(qint64(timeoutSeconds) * 1000)
    , m_memoryLimit(memoryLimit)
    , m_memoryBefore(residentMemory())
{
    s_current = this;
}

ReadGuard::~ReadGuard()
{
    s_current = nullptr;
}

bool ReadGuard::mayGoOn(qint64 work)
{
    if (s_current && s_current->isDue(work))
        s_current->look();
    return !s_current || s_current->m_reason == GoesOn;
}

qint64 ReadGuard::defaultMemoryLimit()
{
    constexpr qint64 Least = 1024 * 1024 * 1024;
    const qint64 physical = qint64(sysconf(_SC_PHYS_PAGES)) * sysconf(_SC_PAGESIZE);
    return std::max(Least, physical / 4);
}

qint64 ReadGuard::currentMemoryLimit()
{
    return s_current ? s_current->m_memoryLimit : defaultMemoryLimit();
}

void ReadGuard::look()
{
    m_work = 0;
    if (m_reason != GoesOn)
        return;
    if (m_cancelled && m_cancelled->load(std::memory_order_relaxed))
        m_reason = Cancelled;
    else if (m_deadline.hasExpired())
        m_reason = TimedOut;
    else if (m_nextMemoryLook.hasExpired())
        lookAtMemory();
}

void ReadGuard::lookAtMemory()
{
    m_nextMemoryLook.setRemainingTime(MillisecondsBetweenMemoryLooks);
    if (residentMemory() - m_memoryBefore > m_memoryLimit)
        m_reason = TooLarge;
}

/// Looks at the memory even if it has just done so.
void ReadGuard::checkAll()
{
    m_nextMemoryLook.setRemainingTime(0);
    end();
}

void ReadGuard::end()
{
    look();
    if (m_reason != GoesOn)
        throw ReadingEnded();
}

bool readWithin(const ReadLimits &limits, const std::function<bool(QString *error)> &reading,
                QString *error)
{
    ReadGuard guard(limits.cancelled, limits.timeoutSeconds, limits.memoryLimit);
    try {
        return reading(error);
    } catch (const ReadingEnded &) {
        *error = endedText(guard.reason(), limits);
    } catch (const std::bad_alloc &) {
        *error = Text::tr("Reading needs more memory than the system gives to this program.");
    }
    return false;
}

} // namespace NETWEIR::Internal
