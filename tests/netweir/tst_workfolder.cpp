// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/tool/workfolder.h>

#include <support/files.h>
#include <support/testcase.h>

#include <QApplication>
#include <QTest>

#include <sys/resource.h>
#include <sys/stat.h>

using NETWEIR::Internal::WorkFolder;

/// Two bytes too long for any file system.
const QString LongName(257, 'x');

class TestWorkFolder : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void goesAwayWithItsFiles();
    void writesWhateverIsThere();
    void saysWhichLinkCannotBeMade();
    void saysThatAFileCannotBeWritten();
    void saysThatAFileIsTooLarge();
    void saysFirstThatThereIsNoFolder();
};

void TestWorkFolder::goesAwayWithItsFiles()
{
    QString path;
    {
        const WorkFolder folder;
        QString error;
        path = folder.path();
        QVERIFY(folder.write("a", "content", &error));
        QVERIFY(folder.link(QDir::rootPath(), "b", &error));
        QCOMPARE(TarnTest::readFile(folder.path("a")), QByteArray("content"));
        QCOMPARE(QFile::symLinkTarget(folder.path("b")), QDir::rootPath());
        QCOMPARE(folder.problem(), QString());
        QCOMPARE(error, QString());
    }
    QVERIFY(!QFileInfo::exists(path));
}

void TestWorkFolder::writesWhateverIsThere()
{
    const WorkFolder folder;
    QString error;
    QCOMPARE(::mkfifo(QFile::encodeName(folder.path("a")).constData(), 0600), 0);
    QVERIFY2(folder.write("a", "first", &error), qPrintable(error));
    QVERIFY2(folder.write("a", "second", &error), qPrintable(error));
    QCOMPARE(TarnTest::readFile(folder.path("a")), QByteArray("second"));
}

void TestWorkFolder::saysWhichLinkCannotBeMade()
{
    const WorkFolder folder;
    QString error;
    QVERIFY(!folder.link("/source", LongName, &error));
    QCOMPARE(error,
             QStringLiteral("No link to /source can be created in the temporary folder in %1: "
                            "File name too long. Set the environment variable TMPDIR to a "
                            "folder that supports links.")
                 .arg(QDir::tempPath()));
}

void TestWorkFolder::saysThatAFileCannotBeWritten()
{
    const WorkFolder folder;
    QString error;
    QVERIFY(!folder.write(LongName, "content", &error));
    QCOMPARE(error, QStringLiteral("A file in the temporary folder in %1 cannot be written: File "
                                   "name too long. Set the environment variable TMPDIR to another "
                                   "folder.")
                        .arg(QDir::tempPath()));
}

/// The signal that comes with such a write must not end the program.
void TestWorkFolder::saysThatAFileIsTooLarge()
{
    constexpr rlim_t Limit = 100000;
    const WorkFolder folder;
    QString error;
    rlimit before;
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit small = {Limit, before.rlim_max};
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
    const bool written = folder.write("a", QByteArray(2 * Limit, 'x'), &error);
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &before), 0);
    QVERIFY(!written);
    QVERIFY2(error.contains("cannot be written: File too large"), qPrintable(error));
}

void TestWorkFolder::saysFirstThatThereIsNoFolder()
{
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", "/dev/null/none");
    const WorkFolder folder;
    const QString problem = folder.problem();
    QString writeError;
    QString linkError;
    QVERIFY(!folder.write("a", "content", &writeError));
    QVERIFY(!folder.link("/source", "b", &linkError));
    before.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before);
    QCOMPARE(problem,
             QStringLiteral("No temporary folder can be created in /dev/null/none: Not a "
                            "directory. Free some space there, or set the environment variable "
                            "TMPDIR to another folder."));
    QCOMPARE(writeError, problem);
    QCOMPARE(linkError, problem);
    QVERIFY(!QFileInfo::exists("a"));
}

TARN_TEST_MAIN(TestWorkFolder)
#include "tst_workfolder.moc"
