// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "waiting.h"

#include "files.h"

#include <QFileSystemWatcher>
#include <QList>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <algorithm>

namespace TarnTest {

namespace {

constexpr int Patience = 20000;

bool runsTimer(const QObject *object)
{
    const QList<QTimer *> timers = object->findChildren<QTimer *>();
    return std::any_of(timers.begin(), timers.end(),
                       [](const QTimer *timer) { return timer->isActive(); });
}

} // namespace

void runDueEvents()
{
    // Timers without an interval expire in the order in which they were started.
    QTimer last;
    last.setSingleShot(true);
    last.start(0);
    while (last.isActive())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

bool waitForFileNotices()
{
    // The system reports changes in their order, and the event loop serves all watchers in one
    // round: once this watcher has its notice, the others have the notices of all earlier changes.
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("last"));
    writeFile(file, "before");
    QFileSystemWatcher watcher;
    watcher.addPath(file);
    const QSignalSpy notices(&watcher, &QFileSystemWatcher::fileChanged);
    writeFile(file, "after");
    return QTest::qWaitFor([&] { return !notices.isEmpty(); }, Patience);
}

bool settle(const QObject *watching)
{
    return waitForFileNotices() && QTest::qWaitFor([&] { return !runsTimer(watching); }, Patience);
}

} // namespace TarnTest
