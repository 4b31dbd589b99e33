// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "toolrun.h"

#include <support/childprocess.h>
#include <support/files.h>
#include <support/librarysymbols.h>
#include <support/testcase.h>

#include <tool/command.h>
#include <tool/console.h>
#include <tool/printable.h>

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

using namespace TarnTest;

class TestProgram : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void informs_data();
    void informs();
    void wrongUsageIsExitCode2_data();
    void wrongUsageIsExitCode2();
    void needsNoLibraryOfWindows();
    void suggestsTheCommandsOfAGroup();
    void findsTheProject_data();
    void findsTheProject();
    void showsWarningsOfArguments();
    void explainsFaultsOfADesign_data();
    void explainsFaultsOfADesign();
    void takesNamesOfAllBytes_data();
    void takesNamesOfAllBytes();
    void showsConfigurations();
    void showsOddConfigurations();
    void writesAFile();
    void refusesAnOutputFile_data();
    void refusesAnOutputFile();
    void leavesTheFileAfterAFailure();
    void failsOnABadStandardOutput_data();
    void failsOnABadStandardOutput();
    void closedStreamsHitNoFile();
    void leavesTheFileOnAFullDisk();
    void tellsWhenTheTemporaryFolderIsFull();
    void writesInAReadOnlyFolder();
    void tellsWhenMemoryIsShort();
    void sendsNoCommandsToTheTerminal();

private:
    QString path(const QString &name) const { return m_folder.filePath(name); }
    ToolRun runHere(const QStringList &arguments) const
    {
        return runTool(arguments, {m_folder.path(), {}, {}, {}, {}});
    }

    QTemporaryDir m_folder;
};

static const char Config[] =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<TARN_CONFIG>\n    <Version>1.0</Version>\n"
    "    <Core index=\"0\" module=\"m\" userClock=\"\" syncUserClock=\"false\"/>\n</TARN_CONFIG>\n";
static const char Shown[] = "tarn_0\n  module      m\n  user clock  none\n";
static const char Source[] = "module m(input clk, output q); assign q = clk; endmodule\n";
static const char Project[] = R"({"version": 1, "sources": [{"file": "m.v"}]})";

void TestProgram::initTestCase()
{
    writeFile(path("a.tarn"), Config);
    writeFile(path("m.v"), Source);
    writeFile(path("other/readme.txt"), "");
}

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

void TestProgram::suggestsTheCommandsOfAGroup()
{
    const ToolRun run = runTool({"export"});
    QCOMPARE(run.errors.section(':', 0, 1),
             QString("tarn: export is the beginning of several commands"));
    QVERIFY(run.errors.contains("export map"));
    QCOMPARE(run.exitCode, 2);
    for (const QStringList &arguments :
         {QStringList({"export", "--help"}), QStringList({"export", "-h"}),
          QStringList({"help", "export"})}) {
        const ToolRun help = runTool(arguments);
        QCOMPARE(help.errors, QString());
        QVERIFY2(help.output.startsWith("Usage: tarn export COMMAND [ARGUMENT...]\n\nCommands:\n"
                                        "  export map "),
                 help.output.constData());
        QVERIFY(!help.output.contains("tarn nets"));
        QCOMPARE(help.exitCode, 0);
    }
}

void TestProgram::findsTheProject_data()
{
    QTest::addColumn<QStringList>("files"); // "name" or "name=content"
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("errors");
    const QString p = QString("p.json=") + Project;
    const QString source = QString("m.v=") + Source;
    const QStringList nets = {"nets", "clk"};
    const auto good = [](const char *name, const QStringList &files, const QStringList &arguments) {
        QTest::newRow(name) << files << arguments << QString();
    };
    good("in the current folder", {p, source}, nets);
    good("beside others",
         {p, source, "package.json={\"version\": \"1.0.0\"}", "list.json=[1]",
          "presets.json={\"version\": 6, \"configurePresets\": []}", "bad.json={\"version\": 1",
          "empty.json="},
         nets);
    good("named", {p, QString("q.json=") + Project, source}, {"nets", "q.json", "clk"});
    good("in a folder with blanks",
         {"my d/p.json=" + QString(Project), "my d/m.v=" + QString(Source)},
         {"nets", "my d/p.json", "clk"});
    good("a source", {source}, {"nets", "m.v", "clk"});
    good("a list", {source, "l.f=m.v\n"}, {"nets", "-f", "l.f", "clk"});
    good("sources beside a project", {p, source}, {"nets", "m.v", "clk"});
    const auto bad = [](const char *name, const QStringList &files, const QStringList &arguments,
                        const char *errors) {
        QTest::newRow(name) << files << arguments << QString(errors);
    };
    bad("none", {}, nets,
        "tarn: there is no project file in ~; name one, or the sources of the design\n");
    bad("no project among JSON files", {"list.json=[1]", "bad.json={"}, nets,
        "tarn: there is no project file in ~ (not a project: bad.json, list.json); name one, or "
        "the sources of the design\n");
    bad("several", {p, QString("q.json=") + Project}, nets,
        "tarn: there are several project files: ~/p.json, ~/q.json; name one of them\n");
    bad("with a mistake", {"p.json={\"version\": 1, \"sources\": [], \"colour\": 1}"}, nets,
        "tarn: ~/p.json: colour: unknown key; known keys: version, name, top, sources, options, "
        "libraryFiles, macros, device, libraryFolders, libraryExtensions\n");
    bad("of a later version", {"p.json={\"version\": 2, \"sources\": []}"}, nets,
        "tarn: ~/p.json: version: must be 1, the version of project files that this application "
        "reads\n");
    bad("named but missing", {}, {"nets", "q.json", "clk"},
        "tarn: Cannot read the project q.json: No such file or directory\n");
    bad("without sources", {"p.json={\"version\": 1}"}, nets,
        "tarn: ~/p.json: Design files are not exist.\n");
    bad("a missing source", {}, {"nets", "no.v", "clk"}, "tarn: cannot read the file ~/no.v\n");
    bad("a missing list", {}, {"nets", "-f", "no.f", "clk"},
        "tarn: cannot read the argument file ~/no.f: No such file or directory\n");
}

/// A folder with those files.
static void fill(const QTemporaryDir &folder, const QStringList &files)
{
    for (const QString &file : files)
        writeFile(folder.filePath(file.section('=', 0, 0)), file.section('=', 1).toUtf8());
}

void TestProgram::findsTheProject()
{
    QFETCH(QStringList, files);
    QFETCH(QStringList, arguments);
    QFETCH(QString, errors);
    const QTemporaryDir folder;
    fill(folder, files);
    const ToolRun run = runTool(arguments, {folder.path(), {}, {}, {}, {}});
    QCOMPARE(run.errors, errors.replace('~', folder.path()));
    QCOMPARE(run.exitCode, errors.isEmpty() ? 0 : 2);
    QCOMPARE(run.output, QByteArray(errors.isEmpty() ? "m/clk\n" : ""));

    // The folder of the file comes first, then the current one.
    if (arguments != QStringList({"nets", "clk"}))
        return;
    writeFile(folder.filePath("a.tarn"), Config);
    const ToolRun outside =
        runTool({"check", folder.filePath("a.tarn")}, {path("other"), {}, {}, {}, {}});
    if (errors.contains("there is no project file"))
        errors.replace("; name one, or", " or " + path("other") + "; name one, or");
    if (errors.isEmpty())
        QVERIFY2(outside.exitCode != 2, qPrintable(outside.errors));
    else
        QCOMPARE(outside.errors, errors);
    const ToolRun inside = runTool({"check", path("a.tarn")}, {folder.path(), {}, {}, {}, {}});
    if (errors.isEmpty())
        QVERIFY2(inside.exitCode != 2, qPrintable(inside.errors));
    else
        QCOMPARE(inside.exitCode, 2);
}

void TestProgram::showsWarningsOfArguments()
{
    writeFile(path("l.f"), "-frobnicate\nm.v\n");
    const ToolRun run = runHere({"nets", "-f", "l.f", "clk"});
    QCOMPARE(run.errors,
             "tarn: warning: " + path("l.f") + ":1: the unknown argument -frobnicate is ignored\n");
    QCOMPARE(run.output, QByteArray("m/clk\n"));
    QCOMPARE(run.exitCode, 0);
}

void TestProgram::explainsFaultsOfADesign_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("errors");
    QTest::newRow("a syntax error")
        << "module m(input clk; endmodule\n"
        << QStringList() << "tarn: ~:1:19: syntax error, unexpected ';', expecting ')'\n";
    QTest::newRow("several tops")
        << "module a; endmodule\nmodule b; endmodule\n"
        << QStringList()
        << "tarn: warning: The design has several candidates for the top module: a, b.\n"
           "tarn: the design: Multiple top, please set top module. (candidates: a, b; choose one "
           "with --top)\n";
    QTest::newRow("no such top")
        << "module a; endmodule\n"
        << QStringList({"--top", "c"})
        << "tarn: warning: The design has no module \"c\". Candidates for the top module: a.\n"
           "tarn: the design: Get module \"c\" failed, just received default module \"a\".\n";
    QTest::newRow("no module") << "// nothing\n"
                               << QStringList()
                               << "tarn: warning: The sources define no module. Add the files "
                                  "that define the modules of the design.\n"
                                  "tarn: the design: Get no module from design.\n";
}

void TestProgram::explainsFaultsOfADesign()
{
    QFETCH(QString, source);
    QFETCH(QStringList, options);
    QFETCH(QString, errors);
    const QString file = path("fault.v");
    writeFile(file, source.toUtf8());
    const ToolRun run = runHere(QStringList("nets") + options + QStringList({"fault.v", "clk"}));
    QCOMPARE(run.errors, errors.replace('~', file));
    QCOMPARE(run.exitCode, 2);
    QCOMPARE(run.output, QByteArray());
}

void TestProgram::takesNamesOfAllBytes_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("locale");
    for (const char *locale : {"C", "C.UTF-8"}) {
        QTest::addRow("blanks, %s", locale) << QByteArray("a  file ") << locale;
        QTest::addRow("UTF-8, %s", locale) << QByteArray("caf\xC3\xA9 \xE2\x82\xAC") << locale;
        QTest::addRow("Latin-1, %s", locale) << QByteArray("caf\xE9 \xFF") << locale;
        QTest::addRow("minus, %s", locale) << QByteArray("-f") << locale;
    }
}

/// Runs a shell command in the folder: QProcess has no arguments of arbitrary bytes.
static ToolRun runShell(const QString &folder, const QByteArray &command, const QString &locale)
{
    const QString script = QDir(folder).filePath("script");
    writeFile(script, "tarn() { '" TARN_TOOL "' \"$@\"; }\n" + command + '\n');
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LC_ALL", locale);
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder);
    process.start("/bin/sh", {script});
    process.waitForFinished(60000);
    return {process.exitCode(), process.readAllStandardOutput(),
            QString::fromLatin1(process.readAllStandardError())};
}

void TestProgram::takesNamesOfAllBytes()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, locale);
    const QTemporaryDir folder;
    writeFile(folder.filePath("c"), Config);
    writeFile(folder.filePath("s"), Source);
    const auto run = [&](const QByteArray &command) {
        return runShell(folder.path(), "n='" + name + "'\n" + command, locale);
    };
    QCOMPARE(run("cp c \"./$n.tarn\"; cp s \"./$n.v\"").exitCode, 0);

    const ToolRun shown = run("tarn show -- \"$n.tarn\"");
    QCOMPARE(shown.errors, QString());
    QCOMPARE(shown.output, QByteArray(Shown));
    const ToolRun nets = run("tarn nets -- \"$n.v\" clk");
    QCOMPARE(nets.errors, QString());
    QCOMPARE(nets.output, QByteArray("m/clk\n"));
    const ToolRun written = run("tarn show -o \"$n.out\" -- \"$n.tarn\" && cat -- \"./$n.out\"");
    QCOMPARE(written.errors, QString());
    QCOMPARE(written.output, QByteArray(Shown));
    const ToolRun copied = run("tarn show --json -- \"$n.tarn\" | tarn write -- \"$n 2.tarn\"; "
                               "cmp -- \"$n.tarn\" \"$n 2.tarn\"");
    QCOMPARE(copied.errors, QString());
    QCOMPARE(copied.output, QByteArray());
    QCOMPARE(copied.exitCode, 0);
    // The error has the bytes of the name.
    const ToolRun missing = run("tarn show -- \"no $n.tarn\"");
    QCOMPARE(missing.errors, "tarn: Can not read no " + QString::fromLatin1(name) +
                                 ".tarn. No such file or directory\n");
    // Qt cannot remove such names.
    QCOMPARE(run("rm -- ./*").exitCode, 0);
}

void TestProgram::showsConfigurations()
{
    const ToolRun run = runTool({"show", TARN_EXAMPLES_DIR "/sensorhub/sensorhub.tarn"});
    QCOMPARE(run.errors, QString());
    QCOMPARE(run.exitCode, 0);
    QVERIFY2(run.output.startsWith("tarn_0\n"
                                   "  module      hub_top\n"
                                   "  user clock  hub_top/clk_sys (output probes synchronise with "
                                   "it)\n"
                                   "  in0         10 bits\n"
                                   "    9:2  hub_top/rx_data[7:0]\n"
                                   "      1  hub_top/rx_valid\n"
                                   "      0  hub_top/rx_error\n"
                                   "  in1         12 bits\n"
                                   "     11:9  hub_top/u_frame_rx/state[2:0]\n"),
             run.output.constData());
    QVERIFY2(run.output.contains("  out1        8 bits, initial value 0x80\n"
                                 "    7:0  hub_top/dbg_duty[7:0]\n"),
             run.output.constData());
    QVERIFY2(run.output.contains("\n\ntarn_1\n  module      hub_top\n"), run.output.constData());
}

void TestProgram::showsOddConfigurations()
{
    const auto shown = [this](const QByteArray &cores) {
        writeFile(path("odd.tarn"),
                  "<TARN_CONFIG><Version>1.0</Version>" + cores + "</TARN_CONFIG>");
        const ToolRun run = runHere({"show", "odd.tarn"});
        return run.errors.toUtf8() + run.output;
    };
    QCOMPARE(shown(""), QByteArray("no cores\n"));
    QCOMPARE(shown("<Core index=\"0\" userClock=\"c\"><ProbeIn index=\"0\"/>"
                   "<ProbeOut index=\"0\"><Signal name=\"a&#10;b\" displayName=\"short\"/>"
                   "</ProbeOut></Core>"),
             QByteArray("tarn_0\n"
                        "  module      none yet\n"
                        "  user clock  c\n"
                        "  in0         0 bits\n"
                        "  out0        1 bit\n"
                        "      0  a\\x0ab (shown as short)\n"));
    QCOMPARE(shown("<Core index=\"0\"/><Core"),
             "tarn: Can not read odd.tarn. " + shown("<Core index=\"0\"/><Core").mid(29));
    QVERIFY(shown("<Core index=\"0\"/><Core").startsWith("tarn: Can not read odd.tarn. "));
}

void TestProgram::writesAFile()
{
    QCOMPARE(runHere({"show", "-o", "new.txt", "a.tarn"}).exitCode, 0);
    QCOMPARE(readFile(path("new.txt")), QByteArray(Shown));
    writeFile(path("old.txt"), QByteArray(100000, 'x'));
    const ToolRun run = runHere({"show", "--output=old.txt", "a.tarn"});
    QCOMPARE(run.errors, QString());
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(readFile(path("old.txt")), QByteArray(Shown));
    QCOMPARE(runHere({"show", "-o", "-", "a.tarn"}).output, QByteArray(Shown));
    QVERIFY(!QFile::exists(path("-")));

    // A link stays one.
    QVERIFY(QFile::link("old.txt", path("link.txt")));
    writeFile(path("old.txt"), "");
    QCOMPARE(runHere({"show", "-o", "link.txt", "a.tarn"}).exitCode, 0);
    QCOMPARE(readFile(path("old.txt")), QByteArray(Shown));
    QVERIFY(QFileInfo(path("link.txt")).isSymLink());
    // Findings are a result.
    const ToolRun found = runHere({"nets", "-o", "none.txt", "--json", "m.v", "nothing"});
    QCOMPARE(found.exitCode, 1);
    QCOMPARE(readFile(path("none.txt")), QByteArray("[]\n"));
}

void TestProgram::refusesAnOutputFile_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("errors");
    QTest::newRow("folder") << QStringList({"show", "-o", "other", "a.tarn"})
                            << "cannot write other: it is a folder; choose another file";
    QTest::newRow("in no folder")
        << QStringList({"show", "-o", "no/x.txt", "a.tarn"})
        << "cannot write no/x.txt: there is no folder ~/no; choose another file";
    QTest::newRow("device") << QStringList({"show", "-o", "/dev/null", "a.tarn"})
                            << "cannot write /dev/null: it is no regular file; choose another file";
    QTest::newRow("the file itself")
        << QStringList({"show", "-o", "./a.tarn", "a.tarn"})
        << "the output would replace a.tarn, which is read; choose another file";
    QTest::newRow("a link to the file")
        << QStringList({"show", "-o", "linked.tarn", "a.tarn"})
        << "the output would replace a.tarn, which is read; choose another file";
    QTest::newRow("the project")
        << QStringList({"nets", "-o", "named.json", "named.json", "clk"})
        << "the output would replace named.json, which is read; choose another file";
    QTest::newRow("a source") << QStringList({"nets", "-o", "m.v", "m.v", "clk"})
                              << "the output would replace m.v, which is read; choose another file";
    QTest::newRow("a list") << QStringList({"nets", "-o", "m.f", "-f", "m.f", "clk"})
                            << "the output would replace m.f, which is read; choose another file";
    QTest::newRow("a source in a list")
        << QStringList({"nets", "-o", "m.v", "-f", "m.f", "clk"})
        << "the output would replace ~/m.v, which is read; choose another file";
    QTest::newRow("a project that is not named")
        << QStringList({"nets", "-o", "named.json", "clk"})
        << "the output would replace ~/named.json, which is read; choose another file";
}

void TestProgram::refusesAnOutputFile()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, errors);
    QFile::link("a.tarn", path("linked.tarn"));
    writeFile(path("other/named.json"), Project);
    writeFile(path("m.f"), "m.v\n");
    QFile::link("other/named.json", path("named.json"));
    const ToolRun run = runHere(arguments);
    QCOMPARE(run.errors, "tarn: " + errors.replace('~', m_folder.path()) + '\n');
    QCOMPARE(run.exitCode, 2);
    QCOMPARE(readFile(path("a.tarn")), QByteArray(Config));
    QCOMPARE(readFile(path("m.v")), QByteArray(Source));
    QFile::remove(path("named.json"));
}

void TestProgram::leavesTheFileAfterAFailure()
{
    writeFile(path("kept.txt"), "kept\n");
    const ToolRun run = runHere({"nets", "-o", "kept.txt", "fault.v", "--in", "x", "clk"});
    QCOMPARE(run.exitCode, 2);
    QCOMPARE(readFile(path("kept.txt")), QByteArray("kept\n"));
}

void TestProgram::failsOnABadStandardOutput_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("redirection");
    QTest::addColumn<QString>("reason");
    QTest::newRow("full") << ""
                          << ">/dev/full"
                          << "No space left on device";
    QTest::newRow("closed") << ""
                            << ">&-"
                            << "Bad file descriptor";
    QTest::newRow("read only") << ""
                               << "1<a.tarn"
                               << "Bad file descriptor";
    QTest::newRow("limit of file sizes") << "ulimit -f 0"
                                         << ">limited.txt"
                                         << "File too large";
}

void TestProgram::failsOnABadStandardOutput()
{
    QFETCH(QString, command);
    QFETCH(QString, redirection);
    QFETCH(QString, reason);
    for (const QStringList &arguments : {QStringList({"show", "a.tarn"}), QStringList("--help")}) {
        const ToolRun run = runTool(arguments, {m_folder.path(), {}, command, redirection, {}});
        QCOMPARE(run.errors, "tarn: cannot write to the standard output: " + reason + '\n');
        QCOMPARE(run.exitCode, 2);
    }
}

void TestProgram::closedStreamsHitNoFile()
{
    const QByteArray json = runHere({"show", "--json", "a.tarn"}).output;
    writeFile(path("b.tarn"), Config);
    const ToolRun written =
        runTool({"write", "b.tarn"}, {m_folder.path(), json, {}, ">&- 2>&-", {}});
    QCOMPARE(written.exitCode, 0);
    QCOMPARE(readFile(path("b.tarn")), QByteArray(Config));
    const ToolRun unread = runTool({"write", "b.tarn"}, {m_folder.path(), {}, {}, "<&-", {}});
    QCOMPARE(unread.exitCode, 2);
    QCOMPARE(unread.errors, QString("tarn: cannot read the standard input: Bad file descriptor\n"));
    const ToolRun silent = runTool({"show", "no.tarn"}, {m_folder.path(), {}, {}, "2>&-", {}});
    QCOMPARE(silent.exitCode, 2);
    QCOMPARE(silent.output, QByteArray());
    QCOMPARE(readFile(path("b.tarn")), QByteArray(Config));
}

void TestProgram::leavesTheFileOnAFullDisk()
{
    const QString disk = path("disk");
    QVERIFY(QDir().mkpath(disk));
    if (!canMountSmallDisk(disk))
        QSKIP("a small disk can not be mounted here; only root can, and not everywhere");
    const QString error = inChild([&]() -> QString {
        if (!mountSmallDisk(disk, 64 * 1024))
            return "cannot mount a disk";
        const QByteArray former(1000, 'x');
        writeFile(disk + "/old.txt", former);
        writeFile(disk + "/config.tarn", Config);
        writeFile(disk + "/filling", QByteArray(40 * 1024, 'x'));
        const ToolRun run = runTool({"nets", "-o", disk + "/old.txt", "--json",
                                     TARN_EXAMPLES_DIR "/sensorhub/sensorhub.json", ""});
        if (run.errors != "tarn: cannot write " + disk + "/old.txt: No space left on device\n" ||
            run.exitCode != 2)
            return run.errors;
        if (readFile(disk + "/old.txt") != former)
            return "the file changed";
        const QStringList files = QDir(disk).entryList(QDir::Files | QDir::Hidden);
        return files == QStringList({"config.tarn", "filling", "old.txt"}) ? QString()
                                                                           : files.join(' ');
    });
    QCOMPARE(error, QString());
}

void TestProgram::tellsWhenTheTemporaryFolderIsFull()
{
    const QString disk = path("temporary");
    QVERIFY(QDir().mkpath(disk));
    if (!canMountSmallDisk(disk))
        QSKIP("a small disk can not be mounted here; only root can, and not everywhere");
    const QString error = inChild([&]() -> QString {
        if (!mountSmallDisk(disk, 16 * 1024))
            return "cannot mount a disk";
        const ToolRun run = runTool({"nets", TARN_EXAMPLES_DIR "/sensorhub/sensorhub.json", "x"},
                                    {{}, {}, {}, {}, {"TMPDIR=" + disk}});
        const QString expected = "tarn: The temporary folder in " + disk +
                                 " cannot be written to: No space left on device";
        if (run.exitCode != 2 || !run.errors.startsWith(expected) || !run.output.isEmpty())
            return run.errors;
        return QDir(disk).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).join(' ');
    });
    QCOMPARE(error, QString());
}

void TestProgram::writesInAReadOnlyFolder()
{
    const QString folder = path("locked");
    writeFile(folder + "/old.txt", "old\n");
    writeFile(folder + "/fixed.txt", "fixed\n");
    giveToOrdinaryUser(folder + "/old.txt");
    giveToOrdinaryUser(folder + "/fixed.txt");
    giveToOrdinaryUser(folder);
    QFile::setPermissions(folder + "/fixed.txt", QFile::ReadOwner);
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner);
    QFile::setPermissions(m_folder.path(), QFile::Permissions(0x7755));
    const QString error = inChild([&]() -> QString {
        if (::geteuid() == 0 && !becomeOrdinaryUser())
            return "cannot become another user";
        qputenv("XDG_STATE_HOME", "/nonexistent");
        Tool::Console good;
        if (!good.setOutputFile(folder + "/old.txt"))
            return "the file cannot be written";
        good.write("new\n");
        if (good.finish(0) != 0 || readFile(folder + "/old.txt") != "new\n")
            return "the file was not written";
        for (const char *name : {"/none.txt", "/fixed.txt"}) {
            Tool::Console bad;
            if (bad.setOutputFile(folder + name))
                return QString("%1 can be written").arg(name);
        }
        return QString();
    });
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QCOMPARE(error, QString());
}

void TestProgram::tellsWhenMemoryIsShort()
{
#ifdef __SANITIZE_ADDRESS__
    QSKIP("the sanitizer reserves memory beyond any limit");
#endif
    QFile large(path("large.json"));
    QVERIFY(large.open(QIODevice::WriteOnly) && large.resize(300000000));
    writeFile(path("b.tarn"), Config);
    const ToolRun run =
        runTool({"write", "b.tarn"}, {m_folder.path(), {}, "ulimit -v 120000", "<large.json", {}});
    large.remove();
    QCOMPARE(run.errors, QString("tarn: there is not enough memory\n"));
    QCOMPARE(run.exitCode, 2);
    QCOMPARE(readFile(path("b.tarn")), QByteArray(Config));
}

void TestProgram::sendsNoCommandsToTheTerminal()
{
    // A line of its own could be a command to a CI system.
    const QString name = QString("a\x1b[31m\t\n::\u009b\u00e9.tarn");
    QCOMPARE(runHere({"show", name}).errors,
             QString("tarn: Can not read a\\x1b[31m\\x09\\x0a::\\x9b\u00e9.tarn. No such file or "
                     "directory\n"));
    QCOMPARE(Tool::printable("a\nb\u007f"), QByteArray("a\\x0ab\\x7f"));
}

TARN_TEST_MAIN(TestProgram)
#include "tst_program.moc"
