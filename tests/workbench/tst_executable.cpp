// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "workbenchrun.h"

#include <support/files.h>
#include <support/testcase.h>

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using TarnTest::Run;
using TarnTest::runWorkbench;
using TarnTest::writeFile;

class TestExecutable : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void informsWithoutDisplay();
    void wrongUsageIsExitCode2_data();
    void wrongUsageIsExitCode2();
    void failureIsExitCode1_data();
    void failureIsExitCode1();

private:
    QString path(const QString &name) const { return m_dir.filePath(name); }
    QString expanded(QString text) const { return text.replace('~', m_dir.path()); }

    QTemporaryDir m_dir;
};

void TestExecutable::initTestCase()
{
    writeFile(path("tiny.v"), "module tiny; endmodule\n");
    writeFile(path("tiny.json"), R"({"version": 1, "sources": [{"file": "one.tarn"}]})");
    writeFile(path("odd.json"), R"({"version": 1, "colour": "red"})");
    QVERIFY(QDir().mkpath(path("noplugins")));
    QCOMPARE(::mkfifo(QFile::encodeName(path("pipe.json")).constData(), 0600), 0);
}

void TestExecutable::informsWithoutDisplay()
{
    const Run help = runWorkbench({"--help"}, {QStringLiteral("xcb"), {}, {}});
    QCOMPARE(help.exitCode, 0);
    QVERIFY(help.output.startsWith(QLatin1String("Usage: tarn-workbench ")));
    const Run version = runWorkbench({"x.json", "--version"}, {QStringLiteral("xcb"), {}, {}});
    QCOMPARE(version.exitCode, 0);
    QCOMPARE(version.output, QStringLiteral("tarn-workbench " TARN_VERSION "\n"));
}

void TestExecutable::wrongUsageIsExitCode2_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no folder") << QStringList("--session") << "--session needs a folder";
    QTest::newRow("two projects") << QStringList({"a.json", "b.json"})
                                  << "only one project file can be opened";
    QTest::newRow("project and source") << QStringList({"a.json", "b.v"})
                                        << "a project file and design arguments cannot be combined";
    QTest::newRow("unknown argument") << QStringList("--lint") << "unknown argument --lint";
    QTest::newRow("pipe for a list")
        << QStringList({"-f", "~/pipe.json"})
        << "cannot read the argument file ~/pipe.json: it is a pipe or a device";
    QTest::newRow("unknown source") << QStringList("/none.v") << "cannot read the file /none.v";
    QTest::newRow("session without configuration")
        << QStringList({"--session", "~/shots", "~/tiny.v"})
        << "A session needs a .tarn file, on the command line or in the project.";
}

void TestExecutable::wrongUsageIsExitCode2()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, reason);
    const Run result = runWorkbench(arguments.replaceInStrings("~", m_dir.path()));
    QCOMPARE(result.errors, expanded(reason) + '\n');
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.output, QString());
}

void TestExecutable::failureIsExitCode1_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no display") << QStringList()
                                << "There is no display. Use --session to run without one.";
    QTest::newRow("no project") << QStringList("~/no.json")
                                << "Cannot read the project ~/no.json: No such file or directory";
    QTest::newRow("pipe for a project") << QStringList("~/pipe.json")
                                        << "Cannot read the project ~/pipe.json: it is a pipe or "
                                           "a device";
    QTest::newRow("bad project") << QStringList("~/odd.json")
                                 << "~/odd.json: colour: unknown key; known keys: version, name, "
                                    "top, sources, options, libraryFiles, macros, device, "
                                    "libraryFolders, libraryExtensions";
    QTest::newRow("no plug-in") << QStringList({"--plugins", "~/noplugins", "--session", "~/s",
                                                "~/tiny.json"})
                                << "There is no plug-in in ~/noplugins.";
}

void TestExecutable::failureIsExitCode1()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, reason);
    const Run result = runWorkbench(arguments.replaceInStrings("~", m_dir.path()));
    QCOMPARE(result.errors, expanded(reason) + '\n');
    QCOMPARE(result.exitCode, 1);
}

TARN_TEST_MAIN(TestExecutable)
#include "tst_executable.moc"
