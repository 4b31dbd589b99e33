// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QElapsedTimer>
#include <QEventLoop>
#include <QObject>
#include <QTimer>

#include <atomic>
#include <functional>

class QDeadlineTimer;

namespace NETWEIR {
class ExtractionMonitor;
} // namespace NETWEIR

namespace NETWEIR::Internal {

class ToolProcess;

/// The error of an extraction that was cancelled.
QString cancelError();

/// The event loops in which a call of an extraction waits, and what it tells its monitor.
class ExtractionProgress final : public QObject
{
    Q_OBJECT

public:
    /// @p monitor may be null.
    explicit ExtractionProgress(ExtractionMonitor *monitor);
    ~ExtractionProgress() override;

    void setPhase(const QString &phase);
    bool isCancelled() const { return m_cancelled; }
    /// For use in threads; valid as long as this object.
    const std::atomic<bool> &cancelled() const { return m_cancelled; }

    /// Waits for the end of the process, at most @p limit milliseconds unless that is negative.
    /// False when it is still running. Cancel kills it.
    bool wait(ToolProcess *process, int limit = -1);

    /// Runs @p work in a thread and waits for its end. @p work must check cancelled() and end by
    /// itself after Cancel.
    void runInThread(const std::function<void()> &work);

    /// Cancels when the monitor wants that.
    void look();

private:
    void cancel();
    void tick();
    void exec(const std::function<bool()> &isDone, int limit);
    void runLoop(QEventLoop::ProcessEventsFlags events, const QDeadlineTimer &end);

    ExtractionMonitor *m_monitor;
    QEventLoop m_loop;
    QElapsedTimer m_elapsed;
    QTimer m_tick;
    std::atomic<bool> m_cancelled{false};
};

} // namespace NETWEIR::Internal
