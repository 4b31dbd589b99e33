// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "extractionprogress.h"

#include "toolprocess.h"

#include <netweir/extractionmonitor.h>
#include <netweir/internal/ground/messages.h>

#include <QDeadlineTimer>
#include <QThread>

#include <memory>

namespace NETWEIR::Internal {

namespace {

constexpr int TickInterval = 200;

} // namespace

QString cancelError()
{
    return errorMessage(Text::tr("Reading the design was cancelled."));
}

ExtractionProgress::ExtractionProgress(ExtractionMonitor *monitor)
    : m_monitor(monitor)
{
    if (m_monitor)
        m_monitor->m_progress = this;
    m_elapsed.start();
    m_tick.setInterval(TickInterval);
    connect(&m_tick, &QTimer::timeout, this, &ExtractionProgress::tick);
}

ExtractionProgress::~ExtractionProgress()
{
    if (m_monitor)
        m_monitor->m_progress = nullptr;
}

void ExtractionProgress::setPhase(const QString &phase)
{
    if (m_monitor)
        m_monitor->phaseChanged(phase);
    look();
}

void ExtractionProgress::tick()
{
    if (m_monitor)
        m_monitor->ticked(m_elapsed.elapsed());
    look();
}

void ExtractionProgress::look()
{
    if (m_monitor && m_monitor->isCancelled())
        cancel();
}

void ExtractionProgress::cancel()
{
    m_cancelled = true;
    m_loop.quit();
}

bool ExtractionProgress::wait(ToolProcess *process, int limit)
{
    const QMetaObject::Connection connection =
        connect(process, &QProcess::stateChanged, &m_loop, &QEventLoop::quit);
    exec([this, process] { return m_cancelled || !process->isRunning(); }, limit);
    disconnect(connection);
    if (m_cancelled)
        process->end();
    return !process->isRunning();
}

void ExtractionProgress::runInThread(const std::function<void()> &work)
{
    const std::unique_ptr<QThread> thread(QThread::create(work));
    connect(thread.get(), &QThread::finished, &m_loop, &QEventLoop::quit);
    thread->start();
    exec([this, &thread] { return m_cancelled || thread->isFinished(); }, -1);
    thread->wait();
}

/// Runs the event loop until @p isDone is true, which is checked each time the loop quits.
void ExtractionProgress::exec(const std::function<bool()> &isDone, int limit)
{
    const QDeadlineTimer end(limit); // Never comes when the limit is negative.
    m_tick.start();
    while (!isDone() && !end.hasExpired()) {
        const int inputDelay = m_monitor ? m_monitor->inputDelay() : 0;
        if (inputDelay > 0)
            runLoop(QEventLoop::ExcludeUserInputEvents, qMin(end, QDeadlineTimer(inputDelay)));
        else
            runLoop(QEventLoop::AllEvents, end);
    }
    m_tick.stop();
}

/// Runs the event loop until it quits, or until @p end.
void ExtractionProgress::runLoop(QEventLoop::ProcessEventsFlags events, const QDeadlineTimer &end)
{
    QTimer timer;
    timer.setSingleShot(true);
    connect(&timer, &QTimer::timeout, &m_loop, &QEventLoop::quit);
    if (!end.isForever())
        timer.start(int(end.remainingTime()));
    // The loop does not start when the application is quitting: the design is not needed any more.
    if (m_loop.exec(events) < 0)
        cancel();
}

} // namespace NETWEIR::Internal
