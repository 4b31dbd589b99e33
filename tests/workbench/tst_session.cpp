// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "workbenchrun.h"

#include <support/files.h>
#include <support/testcase.h>

#include <QApplication>
#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using TarnTest::readFile;
using TarnTest::Run;
using TarnTest::runWorkbench;
using TarnTest::writeFile;

class TestSession : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void opensAddsChecksAndSaves();
    void takesTheConfigurationOfTheProject();
    void takesTheProjectBesideTheConfiguration_data();
    void takesTheProjectBesideTheConfiguration();
    void opensTheDesignOfAList();
    void opensDesignsWithVhdl_data();
    void opensDesignsWithVhdl();
    void onlyVhdlNeedsItsElaborator_data();
    void onlyVhdlNeedsItsElaborator();
    void namesWhatIsWrongInAList();
    void worksWithLittleMemory_data();
    void worksWithLittleMemory();
    void tooLittleMemoryIsAnError();
    void limitOfFileSizesIsAnError_data();
    void limitOfFileSizesIsAnError();
    void namesATemporaryFolderThatIsNone_data();
    void namesATemporaryFolderThatIsNone();
    void reportsFailures_data();
    void reportsFailures();

private:
    QString path(const QString &name) const { return m_dir.filePath(name); }
    void writeMixedDesign();
    QString expanded(QString text) const { return text.replace('~', m_dir.path()); }

    QTemporaryDir m_dir;
};

void TestSession::initTestCase()
{
    writeFile(path("tiny.json"), R"({"version": 1, "top": "tiny",
        "sources": [{"file": "tiny.v"}, {"file": "one.tarn"}]})");
    writeFile(path("tiny.v"), R"(module tiny(input clk, input [3:0] d, output reg [3:0] q);
        wire [3:0] next = d + 4'd1;
        always @(posedge clk) q <= next;
        endmodule)");
    writeFile(path("broken.json"), R"({"version": 1, "sources": [{"file": "broken.v"}]})");
    writeFile(path("broken.v"), "module broken(; endmodule");
    writeFile(path("empty.json"), R"({"version": 1})");
    writeFile(path("bad.tarn"), "no XML");
    QCOMPARE(::mkfifo(QFile::encodeName(path("pipe.tarn")).constData(), 0600), 0);
    writeFile(path("none.tarn"), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<TARN_CONFIG>\n"
                                 "    <Version>1.0</Version>\n</TARN_CONFIG>\n");
    writeFile(path("one.tarn"), R"(<?xml version="1.0" encoding="UTF-8"?>
<TARN_CONFIG>
    <Version>1.0</Version>
    <Core index="0" module="tiny">
        <ProbeIn index="0">
            <Signal name="tiny/clk"/>
        </ProbeIn>
    </Core>
</TARN_CONFIG>
)");
}

void TestSession::opensAddsChecksAndSaves()
{
    const QByteArray configuration = readFile(path("one.tarn"));
    const QByteArray project = readFile(path("tiny.json"));
    const Run result =
        runWorkbench({"--session", path("shots/new"), path("tiny.json"), path("one.tarn")});
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.exitCode, 0);
    QString output = result.output;
    output.replace(QRegularExpression(QStringLiteral(", [0-9.]+ s\\)")), QStringLiteral(", T s)"));
    QCOMPARE(output, expanded("design: tiny\n"
                              "screenshot: ~/shots/new/1-start.png\n"
                              "top module: tiny\n"
                              "nets read: 13 (3 buses, 1 nodes, T s)\n"
                              "cores: 1\n"
                              "screenshot: ~/shots/new/2-editor.png\n"
                              "added a core: 2\n"
                              "screenshot: ~/shots/new/3-core-added.png\n"
                              "removed it again: 1\n"
                              "check: passed, a copy was saved\n"));
    const QImage start(path("shots/new/1-start.png"));
    const QImage editor(path("shots/new/2-editor.png"));
    const QImage added(path("shots/new/3-core-added.png"));
    QCOMPARE(start.size(), QSize(1280, 720));
    QCOMPARE(editor.size(), start.size());
    QVERIFY(editor != start);
    QVERIFY(added != editor);
    QCOMPARE(readFile(path("one.tarn")), configuration);
    QCOMPARE(readFile(path("tiny.json")), project);
}

void TestSession::takesTheConfigurationOfTheProject()
{
    const Run result = runWorkbench({"--session", path("shots"), path("tiny.json")});
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.exitCode, 0);
    QVERIFY(result.output.endsWith(QLatin1String("check: passed, a copy was saved\n")));
}

void TestSession::takesTheProjectBesideTheConfiguration_data()
{
    QTest::addColumn<QByteArray>("second");
    QTest::addColumn<QString>("warnings");
    QTest::addColumn<QString>("errors");
    const QString noDesign = QStringLiteral("Error: Design files are not exist.\n");
    QTest::newRow("one project") << QByteArray() << QString() << QString();
    QTest::newRow("other JSON file")
        << QByteArray(R"({"version": "2", "sources": []})") << QString() << QString();
    QTest::newRow("two projects")
        << QByteArray(R"({"version": 1, "sources": []})")
        << "WARNING: There are several project files in ~/beside. Open the one to use.\n"
        << noDesign;
}

void TestSession::takesTheProjectBesideTheConfiguration()
{
    QFETCH(QByteArray, second);
    QFETCH(QString, warnings);
    QFETCH(QString, errors);
    writeFile(path("beside/tiny.json"), R"({"version": 1, "sources": [{"file": "../tiny.v"}]})");
    writeFile(path("beside/second.json"), second);
    writeFile(path("beside/one.tarn"), readFile(path("one.tarn")));
    const QString inFolder = QStringLiteral("cd '%1'").arg(path("beside"));
    for (const Run &result :
         {runWorkbench({"--session", path("shots"), path("beside/one.tarn")}),
          runWorkbench({"--session", path("shots"), "one.tarn"}, {"offscreen", inFolder, {}})}) {
        QCOMPARE(result.warnings, expanded(warnings));
        QCOMPARE(result.errors, errors);
        QCOMPARE(result.output.endsWith(QLatin1String("check: passed, a copy was saved\n")),
                 errors.isEmpty());
    }
}

/// A list written for other tools, for a design in several folders.
void TestSession::opensTheDesignOfAList()
{
    writeFile(path("soc/rtl/tiny.v"), R"(`include "width.vh"
        module tiny(input clk, input [`WIDTH-1:0] d, output [`WIDTH-1:0] q);
        stage #(`WIDTH) s(clk, d, q);
        endmodule)");
    writeFile(path("soc/inc/width.vh"), "`define WIDTH `BITS\n");
    writeFile(path("soc/cells/stage.v"), R"(module stage #(parameter W = 1) (
        input clk, input [W-1:0] d, output [W-1:0] q);
        delay #(W) x(clk, d, q);
        endmodule)");
    writeFile(path("soc/cells/delay.sv"), R"(module delay #(parameter W = 1) (
        input logic clk, input logic [W-1:0] d, output logic [W-1:0] q);
        always_ff @(posedge clk) q <= d;
        endmodule)");
    writeFile(path("soc/sim/all.f"), "// Everything.\n-timescale 1ns/1ps -l run.log \\\n"
                                     "+define+BITS=3+UNUSED\n-F ${TARN_TEST_SOC}/rtl/rtl.f\n"
                                     "-y $(TARN_TEST_SOC)/cells +libext+.v+.sv\n");
    writeFile(path("soc/rtl/rtl.f"), "*.v # all of them\n+incdir+../inc\n+acc\n");
    qputenv("TARN_TEST_SOC", QFile::encodeName(path("soc")));

    const Run result =
        runWorkbench({"--session", path("shots"), "-f", path("soc/sim/all.f"), path("one.tarn")});
    QCOMPARE(result.errors, QString());
    QCOMPARE(
        result.warnings,
        expanded("WARNING: ~/soc/sim/all.f:2: the unknown argument -timescale 1ns/1ps is ignored\n"
                 "WARNING: ~/soc/sim/all.f:2: the unknown argument -l run.log is ignored\n"
                 "WARNING: ~/soc/rtl/rtl.f:3: the unknown argument +acc is ignored\n"));
    QVERIFY2(result.output.contains(QLatin1String("nets read: 21 (6 buses, 3 nodes, ")),
             qPrintable(result.output));
    QCOMPARE(result.exitCode, 0);
}

/// The entity Stage, which needs the library dsp and the Verilog module hold, and the Verilog
/// module shell, which needs the entity.
void TestSession::writeMixedDesign()
{
    writeFile(path("mixed/dsp.vhd"), R"(library ieee; use ieee.std_logic_1164.all;
        package filters is
            subtype sample is std_logic_vector(3 downto 0);
        end package;)");
    writeFile(path("mixed/stage.vhd"), R"(library ieee; use ieee.std_logic_1164.all;
        library dsp; use dsp.filters.all;
        entity Stage is
            port (Clk : in std_logic; D : in sample; Q : out sample);
        end entity;
        architecture rtl of Stage is
            component hold is
                port (clk : in std_logic; d : in std_logic_vector(3 downto 0);
                      q : out std_logic_vector(3 downto 0));
            end component;
        begin
            u_hold : hold port map (clk => Clk, d => D, q => Q);
        end architecture;)");
    writeFile(path("mixed/hold.v"), "module hold(input clk, input [3:0] d, output reg [3:0] q);\n"
                                    "always @(posedge clk) q <= d;\nendmodule\n");
    writeFile(path("mixed/shell.v"), "module shell(input clk, input [3:0] d, output [3:0] q);\n"
                                     "stage u_stage(.clk(clk), .d(d), .q(q));\nendmodule\n");
    writeFile(path("mixed/stage.json"), R"({"version": 1, "top": "Stage", "sources": [
        {"file": "stage.vhd"}, {"file": "hold.v"}, {"file": "dsp.vhd", "library": "DSP"}]})");
    writeFile(path("mixed/shell.f"), "--top shell shell.v\n--work dsp dsp.vhd\n"
                                     "--work work stage.vhd hold.v\n");
}

void TestSession::opensDesignsWithVhdl_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("top");
    QTest::addColumn<QString>("nets");
    const QString twoLevels = QStringLiteral("18 (4 buses, 2 nodes, ");
    const QStringList files = {"--work",        "dsp",  "~/mixed/dsp.vhd",
                               "--work",        "work", "~/mixed/stage.vhd",
                               "~/mixed/hold.v"};
    QTest::newRow("project") << QStringList("~/mixed/stage.json") << "Stage" << twoLevels;
    QTest::newRow("top is found") << files << "Stage" << twoLevels;
    QTest::newRow("case of the top does not matter")
        << QStringList({"--top", "STAGE"}) + files << "STAGE" << twoLevels;
    QTest::newRow("VHDL below Verilog") << QStringList({"-F", "~/mixed/shell.f"}) << "shell"
                                        << "27 (6 buses, 3 nodes, ";
}

void TestSession::opensDesignsWithVhdl()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, top);
    QFETCH(QString, nets);
    writeMixedDesign();
    const Run result = runWorkbench(QStringList({"--session", path("shots"), path("one.tarn")}) +
                                    arguments.replaceInStrings("~", m_dir.path()));
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.warnings, QString());
    QVERIFY2(result.output.contains("top module: " + top + "\nnets read: " + nets),
             qPrintable(result.output));
    QCOMPARE(result.exitCode, 0);
}

void TestSession::onlyVhdlNeedsItsElaborator_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("reason");
    const QString missing =
        QStringLiteral("Design files contain some errors.: ERROR: The elaborator \"/nowhere/ghdl\" "
                       "named by the environment variable TARN_GHDL is not a program. Correct or "
                       "unset the variable.\n");
    QTest::newRow("Verilog") << QStringList("~/tiny.v") << QString();
    QTest::newRow("VHDL is disabled") << QStringList("~/mixed/disabled.json") << QString();
    QTest::newRow("VHDL") << QStringList("~/mixed/stage.json") << missing;
    QTest::newRow("VHDL below Verilog") << QStringList({"-F", "~/mixed/shell.f"}) << missing;
}

void TestSession::onlyVhdlNeedsItsElaborator()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, reason);
    writeMixedDesign();
    writeFile(path("mixed/disabled.json"), R"({"version": 1, "sources": [{"file": "hold.v"},
        {"file": "stage.vhd", "enabled": false}]})");
    qputenv("TARN_GHDL", "/nowhere/ghdl");
    const Run result = runWorkbench(QStringList({"--session", path("shots"), path("one.tarn")}) +
                                    arguments.replaceInStrings("~", m_dir.path()));
    qunsetenv("TARN_GHDL");
    QCOMPARE(result.errors, reason);
    QCOMPARE(result.exitCode, reason.isEmpty() ? 0 : 1);
}

void TestSession::namesWhatIsWrongInAList()
{
    writeFile(path("wrong.f"), "-quiet\n\n$TARN_TEST_UNSET/a.v\n");
    const Run result = runWorkbench({"-f", path("wrong.f")});
    QCOMPARE(result.errors,
             expanded("WARNING: ~/wrong.f:1: the unknown argument -quiet is ignored\n"
                      "~/wrong.f:3: the environment variable TARN_TEST_UNSET is not set\n"));
    QCOMPARE(result.exitCode, 2);
}

void TestSession::worksWithLittleMemory_data()
{
    QTest::addColumn<QString>("limit");
    QTest::newRow("300 MB at most") << "ulimit -v 300000";
    QTest::newRow("300 MB that may be raised") << "ulimit -Sv 300000";
}

void TestSession::worksWithLittleMemory()
{
#ifdef __SANITIZE_ADDRESS__
    QSKIP("The sanitizer alone takes more address space");
#endif
    QFETCH(QString, limit);
    const QString project = QStringLiteral(TARN_EXAMPLES_DIR "/sensorhub/sensorhub.json");
    const Run result = runWorkbench({"--session", path("shots"), project},
                                    {QStringLiteral("offscreen"), limit, {}});
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.exitCode, 0);
    QVERIFY(result.output.endsWith(QLatin1String("check: passed, a copy was saved\n")));
}

/// The tool prints more than the program can store.
void TestSession::tooLittleMemoryIsAnError()
{
#ifdef __SANITIZE_ADDRESS__
    QSKIP("The sanitizer alone takes more address space");
#endif
    writeFile(path("tool"), "#!/bin/sh\necho '`line 1 \"netweir_s1/tiny.v\" 1'\n"
                            "yes 'wire a_name_of_some_length;' | head -c 200000000\n");
    QVERIFY(QFile::setPermissions(path("tool"), QFile::ReadOwner | QFile::ExeOwner));
    qputenv("TARN_VERILATOR", path("tool").toLocal8Bit());
    const Run result =
        runWorkbench({"--session", path("shots"), path("tiny.json")},
                     {QStringLiteral("offscreen"), QStringLiteral("ulimit -v 300000"), {}});
    qunsetenv("TARN_VERILATOR");
    QCOMPARE(result.errors, QStringLiteral("Design files contain some errors.: ERROR: There is not "
                                           "enough memory to read the design.\n"));
    QCOMPARE(result.exitCode, 1);
}

void TestSession::limitOfFileSizesIsAnError_data()
{
    QTest::addColumn<QString>("limit"); // In units of 512 bytes.
    QTest::addColumn<QString>("reason");
    QTest::newRow("smaller than a screenshot")
        << "ulimit -f 16"
        << "Cannot write the screenshot ~/shots/1-start.png\n";
    QTest::newRow("smaller than the elaborated design")
        << "ulimit -f 380"
        << "Design files contain some errors.: ERROR: Elaborating the design needs a file larger "
           "than the limit (190 kB) and was stopped.\n";
}

/// The session ends by itself, not by the signal.
void TestSession::limitOfFileSizesIsAnError()
{
    QFETCH(QString, limit);
    QFETCH(QString, reason);
    const QString project = QStringLiteral(TARN_EXAMPLES_DIR "/sensorhub/sensorhub.json");
    const Run result = runWorkbench({"--session", path("shots"), project},
                                    {QStringLiteral("offscreen"), limit, {}});
    QCOMPARE(result.errors, expanded(reason));
    QCOMPARE(result.exitCode, 1);
}

void TestSession::namesATemporaryFolderThatIsNone_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("reason");
    QTest::newRow("file") << "file"
                          << "Not a directory";
    QTest::newRow("missing") << "none"
                             << "No such file or directory";
}

void TestSession::namesATemporaryFolderThatIsNone()
{
    QFETCH(QString, folder);
    QFETCH(QString, reason);
    writeFile(path("file"), "");
    const Run result = runWorkbench({"--session", path("shots"), path("tiny.json")},
                                    {QStringLiteral("offscreen"), {}, path(folder)});
    QCOMPARE(
        result.errors,
        QStringLiteral("Cannot make a temporary folder in %1: %2\n").arg(path(folder), reason));
    QCOMPARE(result.exitCode, 1);
}

void TestSession::reportsFailures_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no configuration")
        << QStringList({"~/tiny.json", "~/no.tarn"}) << "Cannot read the file ~/no.tarn";
    QTest::newRow("pipe for a configuration")
        << QStringList({"~/tiny.json", "~/pipe.tarn"}) << "Cannot read the file ~/pipe.tarn";
    QTest::newRow("bad configuration")
        << QStringList({"~/tiny.json", "~/bad.tarn"}) << "bad.tarn open file failed.";
    QTest::newRow("no design") << QStringList({"~/empty.json", "~/one.tarn"})
                               << "Error: Design files are not exist.";
    QTest::newRow("broken design")
        << QStringList({"~/broken.json", "~/one.tarn"}) << "Design files contain some errors.: ";
    QTest::newRow("check fails") << QStringList({"~/tiny.json", "~/none.tarn"})
                                 << "Error: Your settings contain some errors.: Tarn 0: At least "
                                    "one Probe In port or Probe Out port should be enabled";
}

void TestSession::reportsFailures()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, reason);
    arguments.replaceInStrings("~", m_dir.path());
    const Run result = runWorkbench(QStringList({"--session", path("shots")}) + arguments);
    QVERIFY2(result.errors.contains(expanded(reason)), qPrintable(result.errors));
    QCOMPARE(result.exitCode, 1);
    QVERIFY(!result.output.contains(QLatin1String("check: passed")));
}

TARN_TEST_MAIN(TestSession)
#include "tst_session.moc"
