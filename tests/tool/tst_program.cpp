// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "toolrun.h"

#include <support/files.h>
#include <support/librarysymbols.h>
#include <support/testcase.h>

#include <tool/command.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

using TarnTest::runTool;
using TarnTest::ToolRun;

class TestProgram : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void informs_data();
    void informs();
    void wrongUsageIsExitCode2_data();
    void wrongUsageIsExitCode2();
    void needsNoLibraryOfWindows();
};

void TestProgram::informs_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("beginning");
    QTest::newRow("--version") << QStringList("--version") << "tarn 1.";
    QTest::newRow("--help") << QStringList("--help") << "Usage: tarn COMMAND [ARGUMENT...]\n";
    QTest::newRow("-h") << QStringList("-h") << "Usage: tarn COMMAND [ARGUMENT...]\n";
    QTest::newRow("help") << QStringList("help") << "Usage: tarn COMMAND [ARGUMENT...]\n";
    for (const Tool::Command *command : Tool::commands()) {
        const QStringList name = command->name.split(' ');
        const QString usage = "Usage: tarn " + command->name + " [OPTION...] ";
        QTest::newRow(qPrintable(command->name + " --help"))
            << name + QStringList("--help") << usage;
        QTest::newRow(qPrintable("help " + command->name)) << QStringList("help") + name << usage;
    }
}

void TestProgram::informs()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, beginning);
    const ToolRun run = runTool(arguments);
    QCOMPARE(run.errors, QString());
    QCOMPARE(run.exitCode, 0);
    QVERIFY2(run.output.startsWith(beginning.toUtf8()), run.output.constData());
    QVERIFY(run.output.endsWith('\n'));
}

void TestProgram::wrongUsageIsExitCode2_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("errors");
    const QString see = "See tarn --help.\n";
    const QString seeShow = "See tarn show --help.\n";
    QTest::newRow("nothing") << QStringList() << "tarn: no command is given\n" + see;
    QTest::newRow("unknown command")
        << QStringList("frob") << "tarn: there is no command \"frob\"\n" + see;
    QTest::newRow("unknown option")
        << QStringList("--frob") << "tarn: unknown option --frob\n" + see;
    QTest::newRow("help for an unknown command")
        << QStringList({"help", "frob"}) << "tarn: there is no command \"frob\"\n" + see;
    QTest::newRow("no file") << QStringList("show") << "tarn: no file is given\n" + seeShow;
    QTest::newRow("two files") << QStringList({"show", "a.tarn", "b.tarn"})
                               << "tarn: only one file can be given, not also \"b.tarn\"\n" +
                                      seeShow;
    QTest::newRow("unknown option of a command")
        << QStringList({"show", "--frob", "a.tarn"}) << "tarn: unknown option --frob\n" + seeShow;
}

void TestProgram::wrongUsageIsExitCode2()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, errors);
    const ToolRun run = runTool(arguments);
    QCOMPARE(run.errors, errors);
    QCOMPARE(run.exitCode, 2);
    QCOMPARE(run.output, QByteArray());
}

/// Loading them would nearly double the time to start.
void TestProgram::needsNoLibraryOfWindows()
{
    const QStringList libraries = TarnTest::neededLibraries(TARN_TOOL);
    QVERIFY(libraries.contains("libQt5Core.so.5"));
    QCOMPARE(libraries.filter(QRegularExpression("^libQt5")).size(), 1);
    QVERIFY(!libraries.filter("tarnhost_netlist").isEmpty());
    QCOMPARE(libraries.filter("tarnhost_netweir"), QStringList());
}

TARN_TEST_MAIN(TestProgram)
#include "tst_program.moc"
