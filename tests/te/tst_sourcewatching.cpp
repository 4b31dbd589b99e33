// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <te/designmanager.h>

#include "eventlog.h"

#include <support/files.h>
#include <support/testcase.h>
#include <support/waiting.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <cstdio>
#include <memory>
#include <unistd.h>

using namespace TE;
using TarnTest::settle;
using TarnTest::waitForFileNotices;
using TarnTest::writeFile;

namespace {

// How long the watcher collects changes, and how long a file may be missing unreported.
constexpr int Burst = 100;
constexpr int Absence = 500;

// Most tests need not wait that long.
constexpr int ShortBurst = 20;
constexpr int ShortAbsence = 100;

// No test takes that long.
constexpr int VeryLong = 1000000;

} // namespace

class TestSourceWatching : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void writeInPlaceIsReportedOnceForABurst();
    void everyReplacementIsReported_data();
    void everyReplacementIsReported();
    void replacementOfAHardLinkedFileKeepsWatching();
    void shortAbsenceIsOneChange();
    void vanishedFileIsReportedOnceAndWhenItReturns();
    void targetOfALinkIsReportedWhenItReturns();
    void movedFileIsReported();
    void renamedFolderIsReported();
    void otherTargetOfALinkIsReported();
    void fileReturnsBehindAFolderOfItsName();
    void vanishedFileIsForgottenWithItsProject_data();
    void vanishedFileIsForgottenWithItsProject();
    void fileReturnsWithItsFolder();
    void missingFromTheStartIsReportedWhenItAppears();
    void addedFilesAreWatchedAndRemovedOnesAreNot();
    void libraryFilesAreWatched();
    void filesOfLibraryFoldersAreWatched();
    void anotherProjectEndsWatching();
    void thousandsOfSourcesAreWatched();

private:
    QString path(const QString &name) const { return m_dir->filePath(name); }
    QString report(const QString &name) const
    {
        return QStringLiteral("TE.File.Modified file=") + path(name);
    }
    void watch(const QStringList &names);
    void setDelays(int burst, int absence);
    /// Removes the file and waits until the watcher misses it. Until the delays are set again, it
    /// does not report that, however slow the machine is.
    void removeUnreported(const QString &name);
    QStringList nextReports();
    QStringList allReports();

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<DesignManager> m_design;
    QList<QTimer *> m_delays; ///< For bursts of changes, for missing files.
    std::unique_ptr<TarnTest::EventLog> m_log;
};

void TestSourceWatching::init()
{
    TestCase::init();
    m_dir = std::make_unique<QTemporaryDir>();
    m_design = std::make_unique<DesignManager>();
    m_delays = m_design->findChildren<QTimer *>();
    QCOMPARE(m_delays.size(), 2);
    QCOMPARE(m_delays[0]->interval(), Burst);
    QCOMPARE(m_delays[1]->interval(), Absence);
    setDelays(ShortBurst, ShortAbsence);
    m_log = std::make_unique<TarnTest::EventLog>();
}

void TestSourceWatching::cleanup()
{
    m_log.reset();
    m_design.reset();
    m_dir.reset();
    TestCase::cleanup();
}

void TestSourceWatching::watch(const QStringList &names)
{
    Project project;
    project.workingDir = m_dir->path();
    for (const QString &name : names)
        project.sources.append({path(name), fileTypeOf(name), true});
    m_design->setProject(project);
}

void TestSourceWatching::setDelays(int burst, int absence)
{
    m_delays[0]->setInterval(burst);
    m_delays[1]->setInterval(absence);
}

void TestSourceWatching::removeUnreported(const QString &name)
{
    setDelays(ShortBurst, VeryLong);
    QVERIFY(QFile::remove(path(name)));
    QTRY_VERIFY(m_delays[1]->isActive());
}

/// Waits for the next reports.
QStringList TestSourceWatching::nextReports()
{
    const bool came = QTest::qWaitFor([this] { return !m_log->lines().isEmpty(); });
    return came ? m_log->take() : QStringList();
}

/// Waits until no more reports can follow.
QStringList TestSourceWatching::allReports()
{
    const bool settled = settle(m_design.get());
    return settled ? m_log->take() : QStringList(QStringLiteral("not settled"));
}

void TestSourceWatching::writeInPlaceIsReportedOnceForABurst()
{
    writeFile(path("a.v"), "1");
    writeFile(path("b.vhd"), "1");
    watch({"b.vhd", "a.v"});
    for (int i = 0; i < 20; ++i) {
        writeFile(path("b.vhd"), QByteArray::number(i));
        writeFile(path("a.v"), QByteArray::number(i));
    }
    QCOMPARE(allReports(), QStringList({report("a.v"), report("b.vhd")}));
    writeFile(path("a.v"), "again");
    QCOMPARE(allReports(), QStringList(report("a.v")));
}

void TestSourceWatching::everyReplacementIsReported_data()
{
    QTest::addColumn<bool>("removeFirst");
    QTest::newRow("rename over the file") << false;
    QTest::newRow("remove, then rename") << true;
}

void TestSourceWatching::everyReplacementIsReported()
{
    QFETCH(bool, removeFirst);
    writeFile(path("a.v"), "1");
    watch({"a.v"});
    for (int i = 0; i < 3; ++i) {
        writeFile(path("a.v.new"), QByteArray::number(i));
        if (removeFirst)
            QVERIFY(QFile::remove(path("a.v")));
        QCOMPARE(std::rename(qPrintable(path("a.v.new")), qPrintable(path("a.v"))), 0);
        QCOMPARE(allReports(), QStringList(report("a.v")));
    }
}

void TestSourceWatching::replacementOfAHardLinkedFileKeepsWatching()
{
    writeFile(path("a.v"), "1");
    watch({"a.v"});
    QCOMPARE(link(qPrintable(path("a.v")), qPrintable(path("a.v~"))), 0);
    writeFile(path("a.v.new"), "2");
    QCOMPARE(std::rename(qPrintable(path("a.v.new")), qPrintable(path("a.v"))), 0);
    QVERIFY(allReports().contains(report("a.v")));
    writeFile(path("a.v"), "3");
    QCOMPARE(allReports(), QStringList(report("a.v")));
}

void TestSourceWatching::shortAbsenceIsOneChange()
{
    writeFile(path("a.v"), "1");
    watch({"a.v"});
    for (int i = 0; i < 2; ++i) {
        removeUnreported("a.v");
        QCOMPARE(m_log->take(), QStringList());
        writeFile(path("a.v"), "2");
        setDelays(ShortBurst, ShortAbsence);
        QCOMPARE(allReports(), QStringList(report("a.v")));
    }
}

void TestSourceWatching::vanishedFileIsReportedOnceAndWhenItReturns()
{
    writeFile(path("a.v"), "1");
    writeFile(path("b.v"), "1");
    watch({"a.v", "b.v"});
    const QStringList both = {report("a.v"), report("b.v")};
    for (int i = 0; i < 2; ++i) {
        QVERIFY(QFile::remove(path("b.v")));
        QVERIFY(QFile::remove(path("a.v")));
        QCOMPARE(allReports(), both);
        // It still belongs to the project, so views react to its event.
        QVERIFY(m_design->getFileInfo(path("a.v")).enabled);
        writeFile(path("other.v"), QByteArray::number(i));
        QCOMPARE(allReports(), QStringList());
        writeFile(path("a.v"), "2");
        writeFile(path("b.v"), "2");
        QCOMPARE(allReports(), both);
    }
    writeFile(path("a.v"), "3");
    QCOMPARE(allReports(), QStringList(report("a.v")));
}

void TestSourceWatching::targetOfALinkIsReportedWhenItReturns()
{
    writeFile(path("far/deep/a.v"), "1");
    QVERIFY(QFile::link(path("far/deep/a.v"), path("far/link.v")));
    QVERIFY(QDir().mkpath(path("near")));
    QVERIFY(QFile::link(path("far/link.v"), path("near/a.v")));
    watch({"near/a.v"});
    QVERIFY(QDir(path("far/deep")).removeRecursively());
    QCOMPARE(nextReports(), QStringList(report("near/a.v")));
    writeFile(path("far/deep/a.v"), "2");
    QCOMPARE(nextReports(), QStringList(report("near/a.v")));
    QVERIFY(QFile::remove(path("far/link.v")));
    QVERIFY(QFile::remove(path("far/deep/a.v")));
    QCOMPARE(nextReports(), QStringList(report("near/a.v")));
    writeFile(path("far/link.v"), "3");
    QCOMPARE(nextReports(), QStringList(report("near/a.v")));
}

void TestSourceWatching::movedFileIsReported()
{
    writeFile(path("a.v"), "1");
    watch({"a.v"});
    QVERIFY(QFile::rename(path("a.v"), path("b.v")));
    QTRY_COMPARE(m_log->lines(), QStringList(report("a.v")));
    QVERIFY(QFile::rename(path("b.v"), path("a.v")));
    QTRY_COMPARE(m_log->lines().size(), 2);
    m_log->take();
}

void TestSourceWatching::renamedFolderIsReported()
{
    QVERIFY(QDir(m_dir->path()).mkpath("d/e"));
    writeFile(path("top.v"), "1");
    writeFile(path("d/e/a.v"), "1");
    watch({"top.v", "d/e/a.v"});
    for (int i = 0; i < 2; ++i) {
        QVERIFY(QDir().rename(path("d"), path("gone")));
        QCOMPARE(nextReports(), QStringList(report("d/e/a.v")));
        QVERIFY(QDir().rename(path("gone"), path("d")));
        QCOMPARE(nextReports(), QStringList(report("d/e/a.v")));
    }
    writeFile(path("d/e/a.v"), "2");
    QCOMPARE(nextReports(), QStringList(report("d/e/a.v")));
}

void TestSourceWatching::otherTargetOfALinkIsReported()
{
    writeFile(path("a.v"), "1");
    writeFile(path("b.v"), "1");
    QVERIFY(QFile::link(path("a.v"), path("l.v")));
    watch({"l.v"});
    QVERIFY(QFile::link(path("b.v"), path("new")));
    QCOMPARE(std::rename(qPrintable(path("new")), qPrintable(path("l.v"))), 0);
    QCOMPARE(nextReports(), QStringList(report("l.v")));
    writeFile(path("a.v"), "2");
    QCOMPARE(allReports(), QStringList());
    writeFile(path("b.v"), "2");
    QCOMPARE(nextReports(), QStringList(report("l.v")));
    QVERIFY(QFile::remove(path("l.v")));
    QCOMPARE(nextReports(), QStringList(report("l.v")));
    QVERIFY(QFile::link(path("a.v"), path("l.v")));
    QCOMPARE(nextReports(), QStringList(report("l.v")));
}

void TestSourceWatching::fileReturnsBehindAFolderOfItsName()
{
    writeFile(path("a.v"), "1");
    watch({"a.v"});
    QVERIFY(QFile::remove(path("a.v")));
    QVERIFY(QDir().mkdir(path("a.v")));
    QCOMPARE(nextReports(), QStringList(report("a.v")));
    QVERIFY(QDir().rmdir(path("a.v")));
    writeFile(path("a.v"), "2");
    QCOMPARE(nextReports(), QStringList(report("a.v")));
}

void TestSourceWatching::vanishedFileIsForgottenWithItsProject_data()
{
    QTest::addColumn<bool>("wholeProject");
    QTest::newRow("file") << false;
    QTest::newRow("project") << true;
}

void TestSourceWatching::vanishedFileIsForgottenWithItsProject()
{
    QFETCH(bool, wholeProject);
    writeFile(path("a.v"), "1");
    writeFile(path("b.v"), "1");
    watch({"a.v", "b.v"});
    removeUnreported("a.v");
    if (wholeProject)
        watch({"b.v"});
    else
        m_design->removeFile(path("a.v"));
    m_log->take();
    setDelays(ShortBurst, ShortAbsence);
    QCOMPARE(allReports(), QStringList());
}

void TestSourceWatching::fileReturnsWithItsFolder()
{
    writeFile(path("rtl/deep/a.v"), "1");
    watch({"rtl/deep/a.v"});
    const QStringList file(report("rtl/deep/a.v"));
    QVERIFY(QDir(path("rtl")).removeRecursively());
    QCOMPARE(allReports(), file);
    QVERIFY(QDir().mkpath(path("rtl")));
    QCOMPARE(allReports(), QStringList());
    QVERIFY(QDir().mkpath(path("rtl/deep")));
    QCOMPARE(allReports(), QStringList());
    writeFile(path("rtl/deep/a.v"), "2");
    QCOMPARE(nextReports(), file);

    // All at once.
    QVERIFY(QDir(path("rtl")).removeRecursively());
    writeFile(path("rtl/deep/a.v"), "3");
    QCOMPARE(nextReports(), file);
    QVERIFY(settle(m_design.get()));
    m_log->take();
    writeFile(path("rtl/deep/a.v"), "4");
    QCOMPARE(nextReports(), file);
}

void TestSourceWatching::missingFromTheStartIsReportedWhenItAppears()
{
    watch({"none/a.v"});
    writeFile(path("none/a.v"), "1");
    QCOMPARE(nextReports(), QStringList(report("none/a.v")));
}

void TestSourceWatching::addedFilesAreWatchedAndRemovedOnesAreNot()
{
    writeFile(path("a.v"), "1");
    writeFile(path("b.v"), "1");
    watch({"a.v"});
    m_design->addFile(path("b.v"));
    m_design->addFile(path("late.v"));
    m_design->removeFile(path("a.v"));
    m_log->take();
    writeFile(path("a.v"), "2");
    writeFile(path("b.v"), "2");
    writeFile(path("late.v"), "2");
    QCOMPARE(allReports(), QStringList({report("b.v"), report("late.v")}));
}

void TestSourceWatching::libraryFilesAreWatched()
{
    writeFile(path("a.v"), "1");
    writeFile(path("lib.v"), "1");
    watch({"a.v"});
    m_design->setLibraryFiles({path("lib.v"), path("a.v")});
    m_design->removeFile(path("a.v"));
    m_log->take();
    writeFile(path("a.v"), "2");
    writeFile(path("lib.v"), "2");
    QCOMPARE(nextReports(), QStringList({report("a.v"), report("lib.v")}));
    m_design->setLibraryFiles({});
    m_log->take();
    writeFile(path("lib.v"), "3");
    QCOMPARE(allReports(), QStringList());
}

void TestSourceWatching::filesOfLibraryFoldersAreWatched()
{
    for (const char *name : {"a.v", "cells/b.v", "cells/c.sv", "cells/d.txt", "cells/sub/e.v"})
        writeFile(path(QString::fromLatin1(name)), "1");
    watch({"a.v", "cells/c.sv"});
    m_design->setLibraryFolders({path("cells")});
    m_design->removeFile(path("cells/c.sv"));
    m_log->take();
    for (const char *name : {"a.v", "cells/b.v", "cells/c.sv", "cells/d.txt", "cells/sub/e.v"})
        writeFile(path(QString::fromLatin1(name)), "2");
    const QStringList changed = {report("a.v"), report("cells/b.v"), report("cells/c.sv")};
    QCOMPARE(allReports(), changed);
    QVERIFY(QFile::remove(path("cells/b.v")));
    QTRY_COMPARE(m_log->lines(), QStringList(report("cells/b.v")));
    m_design->setLibraryFolders({});
    m_log->take();
    writeFile(path("cells/b.v"), "3");
    writeFile(path("cells/c.sv"), "3");
    QCOMPARE(allReports(), QStringList());
}

void TestSourceWatching::anotherProjectEndsWatching()
{
    writeFile(path("a.v"), "1");
    watch({"a.v"});
    writeFile(path("a.v"), "2");
    QVERIFY(waitForFileNotices());
    watch({});
    writeFile(path("a.v"), "3");
    QCOMPARE(allReports(), QStringList());
}

void TestSourceWatching::thousandsOfSourcesAreWatched()
{
    QStringList names;
    for (int i = 0; i < 5000; ++i) {
        names.append(QStringLiteral("f%1.v").arg(i));
        writeFile(path(names.last()), "1");
    }
    QElapsedTimer timer;
    timer.start();
    watch(names);
    setDelays(Burst, Absence);
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
    QStringList expected;
    for (const QString &name : {names[10], names[2050], names[4999]}) {
        expected.append(report(name));
        writeFile(path(name), "2");
    }
    QCOMPARE(nextReports(), expected);

    // All files change, as when another branch is checked out.
    for (const QString &name : qAsConst(names)) {
        QVERIFY(QFile::remove(path(name)));
        writeFile(path(name), "3");
    }
    timer.start();
    QTRY_COMPARE_WITH_TIMEOUT(QSet<QString>(m_log->lines().begin(), m_log->lines().end()).size(),
                              names.size(), 20000);
    QVERIFY2(timer.elapsed() < 10000, qPrintable(QString::number(timer.elapsed())));
    m_log->take();
    writeFile(path(names[3000]), "4");
    QTRY_VERIFY(m_log->lines().contains(report(names[3000])));
}

TARN_TEST_MAIN(TestSourceWatching)
#include "tst_sourcewatching.moc"
