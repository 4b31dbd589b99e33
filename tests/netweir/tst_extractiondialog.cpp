// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/dialog/extractiondialog.h>
#include <netweir/internal/tool/extractionprogress.h>

#include <support/testcase.h>

#include <QElapsedTimer>
#include <QProgressDialog>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <thread>

using namespace NETWEIR::Internal;

namespace {

QProgressDialog *dialogOf(const QWidget &window)
{
    return window.findChild<QProgressDialog *>(QStringLiteral("NETWEIR__ExtractionProgress"));
}

/// A job for a thread that ends when it is cancelled, or after @p milliseconds.
std::function<void()> job(const ExtractionProgress &progress, int milliseconds)
{
    return [&cancelled = progress.cancelled(), milliseconds] {
        QElapsedTimer timer;
        timer.start();
        while (!cancelled && timer.elapsed() < milliseconds)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    };
}

} // namespace

/// The dialog without a design: when it shows, what it says, and what cancels.
class TestExtractionDialog : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void showsPhaseAndTime();
    void showsAfterAMoment();
    void doesNotShowForShortWork();
    void inputWaitsUntilItShows();
    void cancelEndsTheWaitAtOnce_data();
    void cancelEndsTheWaitAtOnce();
    void staysHiddenAfterCancel();
    void goesWithTheExtraction();
};

void TestExtractionDialog::showsPhaseAndTime()
{
    QWidget window;
    ExtractionDialog monitor(&window);
    QProgressDialog *dialog = dialogOf(window);
    QVERIFY(dialog);
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Reading RTL Netlist"));
    QCOMPARE(dialog->windowModality(), Qt::ApplicationModal);
    QCOMPARE(dialog->labelText(), QStringLiteral("Reading sources"));
    QCOMPARE(dialog->findChild<QPushButton *>()->text(), QStringLiteral("Cancel"));
    QCOMPARE(dialog->minimumWidth(), 360);
    QCOMPARE(dialog->minimum(), 0);
    QCOMPARE(dialog->maximum(), 0);
    ExtractionProgress progress(&monitor);
    progress.setPhase(QStringLiteral("Building netlist"));
    QCOMPARE(dialog->labelText(), QStringLiteral("Building netlist\nElapsed time: 0 s"));
    QVERIFY(!dialog->isVisible());
    QVERIFY(!progress.isCancelled());
}

void TestExtractionDialog::showsAfterAMoment()
{
    QWidget window;
    QElapsedTimer timer;
    timer.start();
    ExtractionDialog monitor(&window);
    ExtractionProgress progress(&monitor);
    QProgressDialog *dialog = dialogOf(window);
    qint64 shownAfter = -1;
    QTimer poll;
    connect(&poll, &QTimer::timeout, this, [&] {
        if (shownAfter < 0 && dialog->isVisible())
            shownAfter = timer.elapsed();
    });
    poll.start(1);
    progress.setPhase(QStringLiteral("Working"));
    progress.runInThread(job(progress, 1300));
    QVERIFY2(shownAfter >= 300 && shownAfter < 1300, qPrintable(QString::number(shownAfter)));
    // The ticks go on.
    const QRegularExpression expected("^Working\nElapsed time: [1-9] s$");
    QVERIFY2(expected.match(dialog->labelText()).hasMatch(), qPrintable(dialog->labelText()));
}

void TestExtractionDialog::doesNotShowForShortWork()
{
    QWidget window;
    ExtractionDialog monitor(&window);
    ExtractionProgress progress(&monitor);
    progress.runInThread(job(progress, 1));
    // Nor while nothing waits, however long that takes.
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    QCoreApplication::processEvents();
    QVERIFY(!dialogOf(window)->isVisible());
    progress.runInThread(job(progress, 1));
    QVERIFY(dialogOf(window)->isVisible());
}

void TestExtractionDialog::inputWaitsUntilItShows()
{
    QWidget window;
    ExtractionDialog monitor(&window);
    const int delay = monitor.inputDelay();
    QVERIFY2(delay > 0 && delay <= 300, qPrintable(QString::number(delay)));
    QVERIFY(!dialogOf(window)->isVisible());
    std::this_thread::sleep_for(std::chrono::milliseconds(delay));
    QCOMPARE(monitor.inputDelay(), 0);
    QVERIFY(dialogOf(window)->isVisible());
    QCOMPARE(monitor.inputDelay(), 0);
}

void TestExtractionDialog::cancelEndsTheWaitAtOnce_data()
{
    QTest::addColumn<QString>("how");
    for (const char *how : {"button", "close", "reject", "deleted", "parent deleted"})
        QTest::newRow(how) << how;
}

void TestExtractionDialog::cancelEndsTheWaitAtOnce()
{
    QFETCH(QString, how);
    auto window = std::make_unique<QWidget>();
    ExtractionDialog monitor(window.get());
    ExtractionProgress progress(&monitor);
    QProgressDialog *dialog = dialogOf(*window);
    QElapsedTimer sinceCancel;
    QTimer poll;
    connect(&poll, &QTimer::timeout, this, [&] {
        if (sinceCancel.isValid() || !dialog->isVisible())
            return;
        sinceCancel.start();
        if (how == QLatin1String("button"))
            dialog->findChild<QPushButton *>()->click();
        else if (how == QLatin1String("close"))
            dialog->close();
        else if (how == QLatin1String("reject"))
            dialog->reject();
        else if (how == QLatin1String("deleted"))
            delete dialog;
        else
            window.reset();
        QVERIFY(progress.isCancelled());
    });
    poll.start(1);
    progress.runInThread(job(progress, 20000));
    QVERIFY(sinceCancel.isValid());
    QVERIFY2(sinceCancel.elapsed() < 1000, qPrintable(QString::number(sinceCancel.elapsed())));
    QVERIFY(progress.isCancelled());
}

void TestExtractionDialog::staysHiddenAfterCancel()
{
    QWidget window;
    ExtractionDialog monitor(&window);
    ExtractionProgress progress(&monitor);
    Q_EMIT dialogOf(window)->canceled();
    QVERIFY(progress.isCancelled());
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    QCOMPARE(monitor.inputDelay(), 0);
    QVERIFY(!dialogOf(window)->isVisible());
}

void TestExtractionDialog::goesWithTheExtraction()
{
    QWidget window;
    {
        const ExtractionDialog monitor(&window);
        QVERIFY(dialogOf(window));
    }
    QVERIFY(!dialogOf(window));
}

TARN_TEST_MAIN(TestExtractionDialog)
#include "tst_extractiondialog.moc"
