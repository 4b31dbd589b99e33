// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "extractionprogress.h"

#include "toolprocess.h"

#include <netweir/internal/ground/messages.h>

#include <QApplication>
#include <QDeadlineTimer>
#include <QProgressDialog>
#include <QThread>

#include <memory>

namespace NETWEIR::Internal {

namespace {

constexpr int ShowAfter = 300;
constexpr int TickInterval = 200;

} // namespace

QString cancelError()
{
    return errorMessage(Text::tr("Reading the design was cancelled."));
}

ExtractionProgress::ExtractionProgress(QWidget *parent)
{
    m_elapsed.start();
    m_tick.setInterval(TickInterval);
    connect(&m_tick, &QTimer::timeout, this, &ExtractionProgress::updateText);
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
        return; // A program without windows.

    m_dialog = new QProgressDialog(Text::tr("Reading sources"), Text::tr("Cancel"), 0, 0, parent);
    m_dialog->setObjectName(QStringLiteral("NETWEIR__ExtractionProgress"));
    m_dialog->setWindowTitle(Text::tr("Reading RTL Netlist"));
    m_dialog->setWindowModality(Qt::ApplicationModal);
    m_dialog->setAutoClose(false);
    m_dialog->setAutoReset(false);
    m_dialog->setMinimumDuration(24 * 60 * 60 * 1000); // Only showDialog() shows it.
    m_dialog->setMinimumWidth(360);
    connect(m_dialog, &QProgressDialog::canceled, this, &ExtractionProgress::cancel);
    connect(m_dialog, &QDialog::finished, this, &ExtractionProgress::cancel);
    connect(m_dialog, &QObject::destroyed, this, &ExtractionProgress::cancel);
}

ExtractionProgress::~ExtractionProgress()
{
    if (m_dialog)
        m_dialog->disconnect(this);
    delete m_dialog;
}

void ExtractionProgress::setPhase(const QString &phase)
{
    m_phase = phase;
    updateText();
}

void ExtractionProgress::updateText()
{
    if (m_dialog)
        m_dialog->setLabelText(Text::tr("%1\nElapsed time: %2 s")
                                   .arg(m_phase, QString::number(m_elapsed.elapsed() / 1000)));
}

void ExtractionProgress::cancel()
{
    m_cancelled = true;
    m_loop.quit();
}

void ExtractionProgress::showDialog()
{
    if (!m_dialog || m_dialog->isVisible() || m_cancelled)
        return;
    updateText();
    m_dialog->show();
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
        const bool isHidden = m_dialog && !m_dialog->isVisible();
        const qint64 untilShown = isHidden ? ShowAfter - m_elapsed.elapsed() : 0;
        if (untilShown > 0) {
            runLoop(QEventLoop::ExcludeUserInputEvents, qMin(end, QDeadlineTimer(untilShown)));
        } else {
            showDialog();
            runLoop(QEventLoop::AllEvents, end);
        }
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
