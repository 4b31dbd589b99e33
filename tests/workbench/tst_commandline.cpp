// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <workbench/commandline.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using Workbench::CommandLine;

class TestCommandLine : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void divides_data();
    void divides();
    void refuses_data();
    void refuses();
    void helpNamesEveryOptionAndExitCode();
};

namespace {

QString text(const CommandLine &line)
{
    QStringList parts;
    if (line.showHelp)
        parts.append(QStringLiteral("help"));
    if (line.showVersion)
        parts.append(QStringLiteral("version"));
    parts.append(QStringLiteral("plugins=%1 session=%2 project=%3 design=%4 tarn=%5")
                     .arg(line.pluginFolder, line.sessionFolder, line.projectFile,
                          line.designArguments.join('|'), line.tarnFiles.join('|')));
    return parts.join(' ');
}

} // namespace

void TestCommandLine::divides_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("result");
    const auto row = [](const QStringList &arguments, const char *result) {
        QTest::newRow(qPrintable(arguments.join(' '))) << arguments << QString::fromLatin1(result);
    };
    row({}, "plugins= session= project= design= tarn=");
    row({"-h"}, "help plugins= session= project= design= tarn=");
    row({"--help", "--version"}, "help version plugins= session= project= design= tarn=");
    row({"p.json", "a.tarn", "B.TARN"},
        "plugins= session= project=p.json design= tarn=a.tarn|B.TARN");
    row({"--plugins", "d", "--session", "s", "p.JSON"},
        "plugins=d session=s project=p.JSON design= tarn=");
    row({"a.v", "x.tarn", "b.sv"}, "plugins= session= project= design=a.v|b.sv tarn=x.tarn");
    row({"-f", "l.json", "-I", "x.tarn", "-D", "--help", "-v", "--version", "--top", "t.json"},
        "plugins= session= project= design=-f|l.json|-I|x.tarn|-D|--help|-v|--version|--top|t.json "
        "tarn=");
    row({"+incdir+a.json", "-Ia.tarn", "-DA=b.json"},
        "plugins= session= project= design=+incdir+a.json|-Ia.tarn|-DA=b.json tarn=");
    row({"-F", "a.json", "-y", "b.json", "--language", "c.tarn", "-sv", "x.tarn"},
        "plugins= session= project= design=-F|a.json|-y|b.json|--language|c.tarn|-sv tarn=x.tarn");
    row({"--work", "a.tarn", "b.vhd", "--std", "93", "-93", "c.vhdl"},
        "plugins= session= project= design=--work|a.tarn|b.vhd|--std|93|-93|c.vhdl tarn=");
    row({"--lint", "-f"}, "plugins= session= project= design=--lint|-f tarn=");
}

void TestCommandLine::divides()
{
    QFETCH(QStringList, arguments);
    CommandLine line;
    QString error;
    QVERIFY(line.parse(arguments, &error));
    QVERIFY(line.check(&error));
    QTEST(text(line), "result");
}

void TestCommandLine::refuses_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("reason");
    const auto row = [](const QStringList &arguments, const char *reason) {
        QTest::newRow(qPrintable(arguments.join(' '))) << arguments << QString::fromLatin1(reason);
    };
    row({"--plugins"}, "--plugins needs a folder");
    row({"--plugins", ""}, "--plugins needs a folder");
    row({"a.v", "--session"}, "--session needs a folder");
    row({"a.json", "b.json"}, "only one project file can be opened");
    row({"a.json", "b.v"}, "a project file and design arguments cannot be combined");
    row({"-DA", "a.json"}, "a project file and design arguments cannot be combined");
}

void TestCommandLine::refuses()
{
    QFETCH(QStringList, arguments);
    CommandLine line;
    QString error;
    QVERIFY(!line.parse(arguments, &error) || !line.check(&error));
    QTEST(error, "reason");
}

void TestCommandLine::helpNamesEveryOptionAndExitCode()
{
    const QString help = CommandLine::help();
    for (const char *text :
         {"--help", "--version", "--plugins DIR", "--session DIR", "-f FILE", "-I DIR", "+incdir+",
          "-D NAME", "+define+", "-v FILE", "--top NAME", "-F FILE", "-y DIR", "+libext+", "-sv",
          "--language EDITION", "--work LIBRARY", "--std EDITION",
          "0 success, 1 failure, 2 wrong usage"})
        QVERIFY2(help.contains(QLatin1String(text)), text);
    for (const QString &line : help.split('\n'))
        QVERIFY2(line.size() <= 90, qPrintable(line));
    QVERIFY(help.endsWith('\n'));
}

TARN_TEST_MAIN(TestCommandLine)
#include "tst_commandline.moc"
