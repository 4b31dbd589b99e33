// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QElapsedTimer>
#include <QEventLoop>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <atomic>
#include <functional>

class QDeadlineTimer;
class QProgressDialog;

namespace NETWEIR::Internal {

class ToolProcess;

/// The error of an extraction that was cancelled.
QString cancelError();

/// The application-modal dialog with the phase and the elapsed time of an extraction, and the event
/// loops in which the extraction waits.
///
/// The dialog appears after a moment; until then user input waits. It may be deleted with its
/// parent at any time, which cancels the extraction.
class ExtractionProgress final : public QObject
{
    Q_OBJECT

public:
    explicit ExtractionProgress(QWidget *parent);
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

private:
    void cancel();
    void showDialog();
    void updateText();
    void exec(const std::function<bool()> &isDone, int limit);
    void runLoop(QEventLoop::ProcessEventsFlags events, const QDeadlineTimer &end);

    QPointer<QProgressDialog> m_dialog;
    QEventLoop m_loop;
    QElapsedTimer m_elapsed;
    QTimer m_tick;
    QString m_phase;
    std::atomic<bool> m_cancelled{false};
};

} // namespace NETWEIR::Internal
