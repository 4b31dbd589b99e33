// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "toolrun.h"

#include <audit/configtext.h>
#include <support/files.h>
#include <support/testcase.h>

#include <model/tarnconfig.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

#include <sys/stat.h>
#include <unistd.h>

using TarnTest::obeyPermissions;
using TarnTest::readFile;
using TarnTest::runTool;
using TarnTest::ToolRun;
using TarnTest::ToolSurroundings;
using TarnTest::writeFile;

namespace {

/// hub: clk, go, data[7:0], cnt_r, and free and spare, which can be driven.
constexpr char Hub[] = "module hub(input clk, input go, input [7:0] data, output reg cnt_r);\n"
                       "    wire free;\n"
                       "    wire [3:0] spare;\n"
                       "    always @(posedge clk) cnt_r <= go & free & data[0] & spare[1];\n"
                       "endmodule\n";

constexpr char Project[] = R"({
    "name": "hub", "version": 1, "top": "hub",
    "options": {"Synthesize_tool": "%1"},
    "sources": [{"file": "hub.v", "type": "Verilog", "enabled": true}]
})";

/// What changes with each write.
QByteArray stateOf(const QString &path)
{
    struct stat status = {};
    ::stat(QFile::encodeName(path).constData(), &status);
    return QByteArray::number(qint64(status.st_ino)) + ' ' +
           QByteArray::number(qint64(status.st_mtim.tv_sec)) + ' ' +
           QByteArray::number(qint64(status.st_mtim.tv_nsec)) + readFile(path);
}

} // namespace

class TestEditCommand : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void editsAFileWithoutDesign();
    void designSetsTheModules_data();
    void designSetsTheModules();
    void createsAFile();
    void fileWithoutCoresGetsOne();
    void refusesWhatCannotBeEdited_data();
    void refusesWhatCannotBeEdited();
    void failureLeavesTheFile_data();
    void failureLeavesTheFile();
    void equalContentLeavesTheFile_data();
    void equalContentLeavesTheFile();
    void dryRunPrintsTheDifference();
    void checkRefusesWhatTheEditorWouldNotSave_data();
    void checkRefusesWhatTheEditorWouldNotSave();
    void fileWrittenMeanwhileStays_data();
    void fileWrittenMeanwhileStays();
    void fileThatTheUserMayNotWriteStays();
    void linkStays();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QStringList files() const
    {
        return QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }
    ToolRun edit(const QString &arguments, ToolSurroundings surroundings = {}) const;
    void writeProject(const QString &synthesisTool) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestEditCommand::init()
{
    TestCase::init();
    m_folder = std::make_unique<QTemporaryDir>();
    const Cores cores =
        TarnTest::coresFrom({"core", "in: hub/go", "out 0x1: hub/free", "out 0x0: hub/spare[0]"});
    QVERIFY(TARN::writeTARNConfigToXml(cores.list, path("a.tarn")));
    writeFile(path("hub.v"), Hub);
    writeProject("OstraSynthesis");
}

void TestEditCommand::writeProject(const QString &synthesisTool) const
{
    writeFile(path("hub.json"), QString(Project).arg(synthesisTool).toUtf8());
}

ToolRun TestEditCommand::edit(const QString &arguments, ToolSurroundings surroundings) const
{
    surroundings.folder = m_folder->path();
    return runTool(QStringList("edit") + arguments.split(' '), surroundings);
}

void TestEditCommand::editsAFileWithoutDesign()
{
    QVERIFY(QFile::remove(path("hub.json")));
    const ToolRun run = edit("a.tarn add-core add-in 1 value 0.out0 0x0 remove 0.out1");
    QCOMPARE(run.errors, QString());
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(runTool({"show", path("a.tarn")}).output,
             QByteArray("tarn_0\n"
                        "  module      none yet\n"
                        "  user clock  none\n"
                        "  in0         1 bit\n"
                        "      0  hub/go\n"
                        "  out0        1 bit, initial value 0x0\n"
                        "      0  hub/free\n"
                        "\n"
                        "tarn_1\n"
                        "  module      none yet\n"
                        "  user clock  none\n"
                        "  in0         0 bits\n"));
}

void TestEditCommand::designSetsTheModules_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::newRow("project beside the file, for a step") << "a.tarn signals 0.in0 hub/data[7:0]";
    QTest::newRow("project that is named") << "a.tarn hub.json add-in 0";
    QTest::newRow("sources that are named") << "a.tarn hub.v --top hub add-in 0";
    QTest::newRow("project for the check") << "--check a.tarn remove 0.out1";
}

void TestEditCommand::designSetsTheModules()
{
    QFETCH(QString, arguments);
    const ToolRun run = edit(arguments);
    QCOMPARE(run.errors, QString());
    QCOMPARE(run.exitCode, 0);
    QVERIFY(runTool({"show", path("a.tarn")}).output.contains("  module      hub\n"));
}

void TestEditCommand::createsAFile()
{
    const ToolRun run = edit("--new b.tarn add-out 0 signals 0.out0 hub/spare[3:0] hub/free value "
                             "0.out0 0x1f clock 0 hub/clk --check");
    QCOMPARE(run.errors, QString());
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(runTool({"show", path("b.tarn")}).output,
             QByteArray("tarn_0\n"
                        "  module      hub\n"
                        "  user clock  hub/clk (output probes synchronise with it)\n"
                        "  out0        5 bits, initial value 0x1F\n"
                        "    4:1  hub/spare[3:0]\n"
                        "      0  hub/free\n"));
}

void TestEditCommand::fileWithoutCoresGetsOne()
{
    QVERIFY(TARN::writeTARNConfigToXml({}, path("b.tarn")));
    QCOMPARE(edit("b.tarn add-core").exitCode, 0);
    const QByteArray text = runTool({"show", path("b.tarn")}).output;
    QVERIFY2(text.startsWith("tarn_0\n") && text.contains("\ntarn_1\n"), text);
    QVERIFY2(!text.contains("\ntarn_2\n"), text);
}

void TestEditCommand::refusesWhatCannotBeEdited_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("error");
    QTest::newRow("no such file") << "b.tarn add-core"
                                  << "there is no file b.tarn; --new creates it";
    QTest::newRow("exists") << "--new a.tarn add-core"
                            << "a.tarn exists; leave out --new to change it";
    QTest::newRow("link to nothing exists") << "--new link.tarn add-core"
                                            << "link.tarn exists; leave out --new to change it";
    QTest::newRow("no configuration")
        << "other.tarn add-core"
        << "Can not read other.tarn. Line 1, column 7: The root element is \"html\" instead of "
           "\"TARN_CONFIG\". Choose a file that this program has written.";
    QTest::newRow("no folder") << "--new no/b.tarn add-core"
                               << "cannot write no/b.tarn: No such file or directory";
    QTest::newRow("no design")
        << "sub/a.tarn sub/none.json add-core"
        << "Cannot read the project sub/none.json: No such file or directory";
}

void TestEditCommand::refusesWhatCannotBeEdited()
{
    QFETCH(QString, arguments);
    QFETCH(QString, error);
    writeFile(path("other.tarn"), "<html/>\n");
    QVERIFY(QFile::link("nothing.tarn", path("link.tarn")));
    QVERIFY(QDir(m_folder->path()).mkdir("sub"));
    QVERIFY(QFile::copy(path("a.tarn"), path("sub/a.tarn")));
    const QStringList before = files();
    const ToolRun run = edit(arguments);
    QCOMPARE(run.errors, "tarn: " + error + '\n');
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.exitCode, 2);
    QCOMPARE(files(), before);
}

void TestEditCommand::failureLeavesTheFile_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("shellCommand");
    QTest::addColumn<QString>("error");
    const QString none;
    QTest::newRow("a step in the middle") << "a.tarn add-core add-in 7 add-core" << none
                                          << "step 2 (add-in 7): there is no core 7; the file has "
                                             "tarn_0, tarn_1";
    QTest::newRow("the last word") << "a.tarn add-core add-in" << none
                                   << "step 2 (add-in): a word is missing; write add-in CORE";
    QTest::newRow("a name") << "a.tarn add-core signals 0.in0 hub/going" << none
                            << "step 2 (signals 0.in0 hub/going): the design has no net or bus "
                               "\"hub/going\"; similar: hub/go";
    QTest::newRow("a long step is cut off")
        << "a.tarn signals 0.in0 " + QString("x").repeated(200) + " add-core" << none
        << "step 1 (signals 0.in0 " + QString("x").repeated(106) +
               "...): the design has no net or bus \"" + QString("x").repeated(200) +
               "\"; \"tarn nets\" lists what it has";
    QTest::newRow("full disk") << "a.tarn add-core"
                               << "ulimit -f 0"
                               << "cannot write a.tarn: File too large";
}

void TestEditCommand::failureLeavesTheFile()
{
    QFETCH(QString, arguments);
    QFETCH(QString, shellCommand);
    QFETCH(QString, error);
    const QByteArray before = stateOf(path("a.tarn"));
    const QStringList filesBefore = files();
    ToolSurroundings surroundings;
    surroundings.shellCommand = shellCommand;
    const ToolRun run = edit(arguments, surroundings);
    QCOMPARE(run.errors, "tarn: " + error + '\n');
    QCOMPARE(run.exitCode, 2);
    QCOMPARE(stateOf(path("a.tarn")), before);
    QCOMPARE(files(), filesBefore);
}

void TestEditCommand::equalContentLeavesTheFile_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<bool>("changes");
    QTest::newRow("the same value") << "value 0.out0 0x1" << false;
    QTest::newRow("there and back") << "add-in 0 remove 0.in1 add-core remove 1" << false;
    QTest::newRow("another value") << "value 0.out0 0x0" << true;
}

/// The file is not as the tool writes it, but holds the same.
void TestEditCommand::equalContentLeavesTheFile()
{
    QFETCH(QString, steps);
    writeFile(path("a.tarn"), readFile(path("a.tarn")).replace("\n    ", "\n\t"));
    const QByteArray before = stateOf(path("a.tarn"));
    const ToolRun run = edit("a.tarn " + steps);
    QCOMPARE(run.errors, QString());
    QCOMPARE(run.exitCode, 0);
    QTEST(stateOf(path("a.tarn")) != before, "changes");
}

void TestEditCommand::dryRunPrintsTheDifference()
{
    const QByteArray before = stateOf(path("a.tarn"));
    ToolRun run = edit("a.tarn add-in 0 signals 0.in1 hub/data[7:0] --dry-run");
    QCOMPARE(run.errors, QString());
    QCOMPARE(run.output, QByteArray("  tarn_0\n"
                                    "    module      none -> hub\n"
                                    "+   in1         8 bits\n"
                                    "+     hub/data[7:0] (8 bits)\n"));
    QCOMPARE(run.exitCode, 0);
    run = edit("--dry-run a.tarn value 0.out0 0x1");
    QCOMPARE(run.output, QByteArray("no changes\n"));
    QCOMPARE(run.exitCode, 0);
    run = edit("--dry-run --new b.tarn add-in 0");
    QCOMPARE(run.output, QByteArray("+ tarn_0\n"
                                    "+   in0         0 bits\n"));
    QCOMPARE(run.exitCode, 0);
    run = edit("--dry-run a.tarn add-in 1");
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.exitCode, 2);
    QCOMPARE(stateOf(path("a.tarn")), before);
    QCOMPARE(files(), QStringList({"a.tarn", "hub.json", "hub.v"}));
}

void TestEditCommand::checkRefusesWhatTheEditorWouldNotSave_data()
{
    QTest::addColumn<QString>("synthesisTool");
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QStringList>("errors");
    const QString tool = "OstraSynthesis";
    QTest::newRow("fits") << tool << "value 0.out0 0x0" << QStringList();
    QTest::newRow("empty core")
        << tool << "add-core add-in 1"
        << QStringList("Tarn 1: At least one Probe In port or Probe Out port should be enabled");
    QTest::newRow("several errors")
        << tool << "add-core signals 0.out1 hub/free"
        << QStringList({"Tarn 1: At least one Probe In port or Probe Out port should be enabled",
                        "ERROR:Signal \"hub/free\" has multiple drivers(tarn_0->Probe Out0, "
                        "tarn_0->Probe Out1,)"});
    QTest::newRow("other synthesis tool")
        << "Synplify"
        << "value 0.out0 0x0"
        << QStringList("For RTL Design, TARN is only available for OstraSynthesis. Please change "
                       "Synthesis Tool to OstraSynthesis in Configurations.");
}

void TestEditCommand::checkRefusesWhatTheEditorWouldNotSave()
{
    QFETCH(QString, synthesisTool);
    QFETCH(QString, steps);
    QFETCH(QStringList, errors);
    writeProject(synthesisTool);
    const QByteArray before = stateOf(path("a.tarn"));
    QString expected;
    for (const QString &error : qAsConst(errors))
        expected += "tarn: " + error + '\n';
    if (!errors.isEmpty() && !errors.first().startsWith("For RTL"))
        expected += "tarn: a.tarn is not written; mend these errors by further steps\n";
    const ToolRun run = edit("--check a.tarn " + steps);
    QCOMPARE(run.errors, expected);
    QCOMPARE(run.exitCode, errors.isEmpty() ? 0 : 2);
    QCOMPARE(stateOf(path("a.tarn")) == before, !errors.isEmpty());
    const ToolRun unchecked = edit("a.tarn " + steps);
    QCOMPARE(unchecked.errors, QString());
    QCOMPARE(unchecked.exitCode, 0);
}

void TestEditCommand::fileWrittenMeanwhileStays_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("file");
    QTest::newRow("replaced") << "a.tarn"
                              << "mv other.tarn a.tarn"
                              << "a.tarn";
    QTest::newRow("written") << "a.tarn"
                             << "cat other.tarn > a.tarn"
                             << "a.tarn";
    QTest::newRow("link to another file") << "link.tarn"
                                          << "ln -sf other.tarn link.tarn"
                                          << "other.tarn";
    QTest::newRow("created") << "--new b.tarn"
                             << "mv other.tarn b.tarn"
                             << "b.tarn";
}

/// Another program writes the file while the design is read.
void TestEditCommand::fileWrittenMeanwhileStays()
{
    QFETCH(QString, arguments);
    QFETCH(QString, command);
    QFETCH(QString, file);
    QVERIFY(TARN::writeTARNConfigToXml({}, path("other.tarn")));
    QVERIFY(QFile::link("a.tarn", path("link.tarn")));
    const QByteArray other = readFile(path("other.tarn"));
    const QString elaborator = QStandardPaths::findExecutable("verilator_bin");
    writeFile(path("elaborate"),
              QString("#!/bin/sh\n(cd '%1' && [ ! -e done ] && touch done && %2)\nexec %3 \"$@\"\n")
                  .arg(m_folder->path(), command, elaborator)
                  .toUtf8());
    QVERIFY(QFile::setPermissions(path("elaborate"), QFile::ReadOwner | QFile::ExeOwner));
    ToolSurroundings surroundings;
    surroundings.environment = QStringList("TARN_VERILATOR=" + path("elaborate"));
    const ToolRun run = edit(arguments + " hub.json add-in 0", surroundings);
    const QString edited = arguments.section(' ', -1);
    QCOMPARE(run.errors, QString("tarn: another program has written %1 meanwhile; it is not "
                                 "replaced. Run the command again\n")
                             .arg(edited));
    QCOMPARE(run.exitCode, 2);
    QCOMPARE(readFile(path(file)), other);
}

void TestEditCommand::fileThatTheUserMayNotWriteStays()
{
    const QByteArray before = stateOf(path("a.tarn"));
    QVERIFY(QFile::setPermissions(path("a.tarn"), QFile::ReadOwner | QFile::ReadOther));
    ToolSurroundings surroundings;
    surroundings.shellCommand = obeyPermissions();
    const ToolRun run = edit("a.tarn add-core", surroundings);
    QCOMPARE(run.errors, QStringLiteral("tarn: cannot write a.tarn: Permission denied\n"));
    QCOMPARE(run.exitCode, 2);
    QCOMPARE(stateOf(path("a.tarn")), before);
}

void TestEditCommand::linkStays()
{
    QVERIFY(QDir(m_folder->path()).mkdir("sub"));
    QVERIFY(QFile::rename(path("a.tarn"), path("sub/a.tarn")));
    QVERIFY(QFile::link("sub/a.tarn", path("link.tarn")));
    QCOMPARE(edit("link.tarn add-core").exitCode, 0);
    QVERIFY(QFileInfo(path("link.tarn")).isSymLink());
    QVERIFY(readFile(path("sub/a.tarn")).contains("index=\"1\""));
    QCOMPARE(files(), QStringList({"hub.json", "hub.v", "link.tarn"}));
}

TARN_TEST_MAIN(TestEditCommand)

#include "tst_editcommand.moc"
