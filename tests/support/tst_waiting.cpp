// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "waiting.h"

#include "files.h"
#include "testcase.h"

#include <QApplication>
#include <QFileSystemWatcher>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using TarnTest::writeFile;

class TestWaiting : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void dueEventsAreRun();
    void watchersHaveTheirNotices();
    void settledMeansNoTimerRuns();
};

void TestWaiting::dueEventsAreRun()
{
    QStringList log;
    QTimer second;
    second.setSingleShot(true);
    connect(&second, &QTimer::timeout, &second, [&log] { log.append("second timer"); });
    QTimer first;
    first.setSingleShot(true);
    connect(&first, &QTimer::timeout, &first, [&log] { log.append("first timer"); });
    first.start(0);
    second.start(0);
    QMetaObject::invokeMethod(
        &first, [&log] { log.append("posted"); }, Qt::QueuedConnection);
    TarnTest::runDueEvents();
    QCOMPARE(log, (QStringList{"posted", "first timer", "second timer"}));
}

void TestWaiting::watchersHaveTheirNotices()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("a");
    writeFile(file, "before");
    QFileSystemWatcher watcher({file, folder.path()});
    const QSignalSpy files(&watcher, &QFileSystemWatcher::fileChanged);
    const QSignalSpy folders(&watcher, &QFileSystemWatcher::directoryChanged);
    for (int round = 1; round <= 20; ++round) {
        const int before = files.count();
        writeFile(file, QByteArray::number(round));
        writeFile(folder.filePath(QString::number(round)), "");
        QVERIFY(TarnTest::waitForFileNotices());
        QVERIFY(files.count() > before);
        QCOMPARE(folders.count(), round);
    }
}

void TestWaiting::settledMeansNoTimerRuns()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("a");
    writeFile(file, "before");
    QObject watching;
    QObject part(&watching);
    QTimer late(&part);
    late.setSingleShot(true);
    late.setInterval(50);
    const QSignalSpy timeouts(&late, &QTimer::timeout);
    QFileSystemWatcher watcher({file});
    connect(&watcher, &QFileSystemWatcher::fileChanged, &late, qOverload<>(&QTimer::start));
    writeFile(file, "after");
    QVERIFY(TarnTest::settle(&watching));
    QCOMPARE(timeouts.count(), 1);
}

TARN_TEST_MAIN(TestWaiting)
#include "tst_waiting.moc"
