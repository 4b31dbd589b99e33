// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "toolrun.h"

#include <model/configsamples.h>
#include <support/files.h>
#include <support/testcase.h>

#include <model/configwriter.h>
#include <tool/config/configjson.h>

#include <QApplication>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

using TarnTest::obeyPermissions;
using TarnTest::readFile;
using TarnTest::runTool;
using TarnTest::ToolRun;
using TarnTest::ToolSurroundings;
using TarnTest::writeFile;

/// "tarn write" and "tarn show --json" as processes.
class TestWriteCommand : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void filesComeBackByteForByte_data();
    void filesComeBackByteForByte();
    void jsonComesBackByteForByte();
    void keepsLinkAndPermissions();
    void failureLeavesTheFile_data();
    void failureLeavesTheFile();
    void fileThatTheUserMayNotWriteStays();
    void missingFolderIsSaid();
    void folderIsNoFile();
    void saysWhatTheTerminalShouldGive();
    void interruptionLeavesTheFile_data();
    void interruptionLeavesTheFile();

private:
    QString pathOf(const char *name) const { return m_folder->filePath(QLatin1String(name)); }
    ToolRun write(const QByteArray &json, const char *file = "a.tarn")
    {
        return runTool({"write", file}, {m_folder->path(), json, {}, {}, {}});
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    const QByteArray m_json = Tool::configToJson(sampleCores().list);
    const QByteArray m_file = TARN::ConfigWriter(sampleCores().list).content();
};

void TestWriteCommand::init()
{
    TestCase::init();
    m_folder = std::make_unique<QTemporaryDir>();
}

void TestWriteCommand::filesComeBackByteForByte_data()
{
    QTest::addColumn<QString>("path");
    int files = 0;
    for (const char *folder : {"examples", "fuzz/corpus/configreader"}) {
        QDirIterator iterator(QStringLiteral(TARN_SOURCE_DIR "/") + folder, {"*.tarn"}, QDir::Files,
                              QDirIterator::Subdirectories);
        for (; iterator.hasNext(); ++files) {
            const QString path = iterator.next();
            if (iterator.fileName() != "foreign.tarn") // Its layout is another one.
                QTest::newRow(qPrintable(path.section('/', -2))) << path;
        }
    }
    QVERIFY(files > 3);
}

void TestWriteCommand::filesComeBackByteForByte()
{
    QFETCH(QString, path);
    const ToolRun shown = runTool({"show", "--json", path});
    QCOMPARE(shown.exitCode, 0);
    QCOMPARE(shown.errors, QString());
    const ToolRun written = write(shown.output);
    QCOMPARE(written.errors, QString());
    QCOMPARE(written.output, QByteArray());
    QCOMPARE(written.exitCode, 0);
    QCOMPARE(readFile(pathOf("a.tarn")), readFile(path));
}

void TestWriteCommand::jsonComesBackByteForByte()
{
    writeFile(pathOf("a.tarn"), "some content");
    QCOMPARE(write(m_json).exitCode, 0);
    QCOMPARE(readFile(pathOf("a.tarn")), m_file);
    QCOMPARE(runTool({"show", "--json", pathOf("a.tarn")}).output, m_json);
    const ToolRun toFile = runTool({"show", "--json", "-o", pathOf("a.json"), pathOf("a.tarn")});
    QCOMPARE(toFile.exitCode, 0);
    QCOMPARE(toFile.output, QByteArray());
    QCOMPARE(readFile(pathOf("a.json")), m_json);
}

void TestWriteCommand::keepsLinkAndPermissions()
{
    writeFile(pathOf("a.tarn"), "some content");
    const QFile::Permissions permissions = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup;
    QVERIFY(QFile::setPermissions(pathOf("a.tarn"), permissions));
    QVERIFY(QFile::link("a.tarn", pathOf("link.tarn")));
    QCOMPARE(write(m_json, "link.tarn").exitCode, 0);
    QVERIFY(QFileInfo(pathOf("link.tarn")).isSymLink());
    QCOMPARE(readFile(pathOf("a.tarn")), m_file);
    QCOMPARE(QFile::permissions(pathOf("a.tarn")),
             permissions | QFile::ReadUser | QFile::WriteUser);
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden),
             QStringList({"a.tarn", "link.tarn"}));
}

void TestWriteCommand::failureLeavesTheFile_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("shellCommand");
    QTest::addColumn<QString>("redirection");
    QTest::addColumn<QString>("error");
    const QString none;
    QTest::newRow("no JSON") << QByteArray("{\n  version: 1}") << none << none
                             << "cannot use the standard input. Line 2, column 3: Not well-formed "
                                "JSON: syntax error while parsing object key - invalid literal; "
                                "expected string literal. Correct it.";
    QTest::newRow("another form")
        << QByteArray("{\"version\": \"1.0\",\n \"cores\": [{\"index\": 1.0}]}") << none << none
        << "cannot use the standard input. Line 2, /cores/0/index: The value is the number 1.0. "
           "Allowed: a whole number from -2147483648 to 2147483647, without fraction or exponent.";
    const QString empty = "the standard input is empty; give it the JSON form of a configuration, "
                          "as \"tarn show --json\" prints it: tarn write FILE < JSON";
    QTest::newRow("nothing") << QByteArray() << none << none << empty;
    QTest::newRow("white space") << QByteArray(" \n\t\r\n") << none << none << empty;
    QTest::newRow("closed input") << m_json << none << "<&-"
                                  << "cannot read the standard input: Bad file descriptor";
    QTest::newRow("folder as input") << m_json << none << "</"
                                     << "cannot read the standard input: Is a directory";
    QTest::newRow("too large for the disk")
        << m_json << "ulimit -f 0" << none << "cannot write a.tarn: File too large";
}

void TestWriteCommand::failureLeavesTheFile()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, shellCommand);
    QFETCH(QString, redirection);
    QFETCH(QString, error);
    for (const QByteArray &former : {QByteArray("former"), QByteArray()}) {
        if (!former.isNull())
            writeFile(pathOf("a.tarn"), former);
        const ToolRun run =
            runTool({"write", "a.tarn"}, {m_folder->path(), json, shellCommand, redirection, {}});
        QCOMPARE(run.errors, "tarn: " + error + '\n');
        QCOMPARE(run.output, QByteArray());
        QCOMPARE(run.exitCode, 2);
        const QStringList files = former.isNull() ? QStringList() : QStringList("a.tarn");
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden), files);
        QCOMPARE(readFile(pathOf("a.tarn")), former);
        QFile::remove(pathOf("a.tarn"));
    }
}

void TestWriteCommand::fileThatTheUserMayNotWriteStays()
{
    writeFile(pathOf("a.tarn"), "former");
    QVERIFY(QFile::setPermissions(pathOf("a.tarn"), QFile::ReadOwner | QFile::ReadOther));
    const ToolRun run =
        runTool({"write", "a.tarn"}, {m_folder->path(), m_json, obeyPermissions(), {}, {}});
    QCOMPARE(run.errors, QStringLiteral("tarn: cannot write a.tarn: Permission denied\n"));
    QCOMPARE(run.exitCode, 2);
    QCOMPARE(readFile(pathOf("a.tarn")), QByteArray("former"));
}

void TestWriteCommand::missingFolderIsSaid()
{
    const ToolRun run = write(m_json, "missing/a.tarn");
    QCOMPARE(run.errors,
             QStringLiteral("tarn: cannot write missing/a.tarn: No such file or directory\n"));
    QCOMPARE(run.exitCode, 2);
}

void TestWriteCommand::folderIsNoFile()
{
    QVERIFY(QDir(m_folder->path()).mkdir("folder.tarn"));
    const ToolRun run = write(m_json, "folder.tarn");
    QCOMPARE(run.errors, QStringLiteral("tarn: cannot write folder.tarn: it is no regular file\n"));
    QCOMPARE(run.exitCode, 2);
}

void TestWriteCommand::saysWhatTheTerminalShouldGive()
{
    const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY);
    QVERIFY(terminal >= 0 && ::grantpt(terminal) == 0 && ::unlockpt(terminal) == 0);
    const char EndOfInput = '\x04';
    QCOMPARE(::write(terminal, &EndOfInput, 1), ssize_t(1));
    const QString input = QLatin1Char('<') + QLatin1String(::ptsname(terminal));
    const ToolRun run = runTool({"write", "a.tarn"}, {m_folder->path(), {}, {}, input, {}});
    ::close(terminal);
    QCOMPARE(run.errors,
             QStringLiteral(
                 "Reading the JSON form of a configuration from the terminal. End it with "
                 "Ctrl+D.\n"
                 "tarn: the standard input is empty; give it the JSON form of a configuration, as "
                 "\"tarn show --json\" prints it: tarn write FILE < JSON\n"));
    QCOMPARE(run.exitCode, 2);
}

void TestWriteCommand::interruptionLeavesTheFile_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("Ctrl+C") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGKILL") << SIGKILL;
}

void TestWriteCommand::interruptionLeavesTheFile()
{
    QFETCH(int, signal);
    writeFile(pathOf("a.tarn"), "former");
    QProcess process;
    TarnTest::startTool(&process, {"write", "a.tarn"}, {m_folder->path(), {}, {}, {}, {}});
    QVERIFY(process.waitForStarted());
    // More than a pipe holds: when it is gone, the tool is at work.
    process.write(m_json + QByteArray(1000000, ' '));
    QElapsedTimer timer;
    timer.start();
    while (process.bytesToWrite() > 0 && timer.elapsed() < 60000)
        process.waitForBytesWritten(1000);
    QCOMPARE(process.bytesToWrite(), qint64(0));
    ::kill(pid_t(process.processId()), signal);
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::CrashExit);
    QCOMPARE(process.exitCode(), signal);
    QCOMPARE(process.readAllStandardError(), QByteArray());
    QCOMPARE(readFile(pathOf("a.tarn")), QByteArray("former"));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden), QStringList("a.tarn"));
}

TARN_TEST_MAIN(TestWriteCommand)
#include "tst_writecommand.moc"
