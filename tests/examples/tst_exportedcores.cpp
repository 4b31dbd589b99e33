// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "exampleproject.h"
#include "simulatorrun.h"

#include <model/tarnconfig.h>
#include <model/tarncore.h>
#include <support/files.h>
#include <support/testcase.h>
#include <te/teconstants.h>
#include <tool/toolrun.h>

#include <QApplication>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace TarnTest;

namespace {

QString dataPath(const QString &file)
{
    return QStringLiteral(TARN_EXPORTED_CORES_DIR "/") + file;
}

/// What goes into a simulation.
struct Simulation
{
    QStringList options; ///< For both simulators.
    QStringList files;
    QString bench; ///< The module at the top.
};

/// The sources, macros and folders of a project.
Simulation simulationOf(const TE::Project &project, const QString &bench)
{
    Simulation simulation;
    for (const QString &path : project.options.value(TE::OPT::INCLUDEPATH).toStringList())
        simulation.options.append("-I" + QDir(project.workingDir).filePath(path));
    for (const QString &macro : project.macros)
        simulation.options.append("-D" + macro);
    simulation.options.append("-DEXPORTED_CORES");
    simulation.files = designFiles(project);
    simulation.bench = bench;
    return simulation;
}

/// Compiles with Icarus. @p tops are simulated beside the bench.
Run buildWithIcarus(const Simulation &simulation, const QStringList &tops, const QString &language,
                    const QString &folder)
{
    QStringList arguments{"-g" + language, "-o", "simulation.vvp", "-s", simulation.bench};
    for (const QString &top : tops)
        arguments += QStringList{"-s", top};
    return run("iverilog", arguments + simulation.options + simulation.files, folder);
}

Run runWithIcarus(const QString &folder, const QStringList &arguments = {})
{
    return run("vvp", QStringList{"-n", "simulation.vvp"} + arguments, folder);
}

/// Builds with Verilator in the least time. All modules that nothing instantiates are tops.
Run buildWithVerilator(const Simulation &simulation, const QString &folder)
{
    QStringList arguments{"--binary",    "--timing", "-j",          "1",
                          "--timescale", "1ns/1ps",  "-Wno-lint",   "--Mdir",
                          "verilated",   "--prefix", "Vsimulation", "-Wno-style"};
    for (const char *flag :
         {"OPT_FAST=-O0", "OPT_SLOW=-O0", "OPT_GLOBAL=-O0", "VM_PARALLEL_BUILDS=0"})
        arguments += QStringList{"-MAKEFLAGS", flag};
    return run("verilator", arguments + simulation.options + simulation.files, folder);
}

Run runWithVerilator(const QString &folder, const QStringList &arguments = {})
{
    return run(folder + "/verilated/Vsimulation", arguments, folder);
}

/// The values that a monitor prints: the same nets, as the module sees them and as written by hand.
struct Values
{
    QStringList seen;
    QStringList expected;
};

Values valuesOf(const Run &result, const QString &mark)
{
    Values values;
    for (const QString &line : result.output.split('\n')) {
        if (!line.startsWith(mark + ' '))
            continue;
        const QString rest = line.mid(mark.size() + 1);
        values.seen.append(rest.section(" | ", 0, 0));
        values.expected.append(rest.section(" | ", 1, 1));
    }
    return values;
}

/// The positions in the columns of @p lines at which not both 0 and 1 occur.
QList<int> constantBits(const QStringList &lines)
{
    QList<int> positions;
    for (int i = 0; i < lines.value(0).size(); ++i) {
        const auto has = [&lines, i](QChar value) {
            return std::any_of(lines.begin(), lines.end(),
                               [i, value](const QString &line) { return line.at(i) == value; });
        };
        if (lines.first().at(i) != ' ' && !(has('0') && has('1')))
            positions.append(i);
    }
    return positions;
}

/// A line of a list of signals, see exportedcores/zoo.txt.
struct ListedSignal
{
    TARN::ProbeType type;
    QString name;
    QString verilog;
};

QList<ListedSignal> listedSignals(const QString &file)
{
    QList<ListedSignal> list;
    for (const QString &line : QString::fromUtf8(readFile(dataPath(file))).split('\n')) {
        if (line.startsWith("in "))
            list.append({TARN::ProbeTypeIn, line.section(' ', 1, 1), line.section(' ', 2)});
        else if (line.startsWith("out "))
            list.append({TARN::ProbeTypeOut, line.section(' ', 1, 1), line.section(' ', 2)});
    }
    return list;
}

/// A net, or a bus with the members that its range says.
TARN::SignalItem signalItem(const QString &name)
{
    static const QRegularExpression range("^(.*)\\[(-?\\d+):(-?\\d+)\\]$");
    TARN::SignalItem item;
    item.name = name;
    item.kind = TARN::SignalItem::Net;
    const QRegularExpressionMatch match = range.match(name);
    if (!match.hasMatch())
        return item;
    item.kind = TARN::SignalItem::Bus;
    const int left = match.captured(2).toInt();
    const int right = match.captured(3).toInt();
    const int step = left > right ? -1 : 1;
    for (int index = left; index != right + step; index += step) {
        TARN::SignalItem member;
        member.name = QStringLiteral("%1[%2]").arg(match.captured(1)).arg(index);
        member.kind = TARN::SignalItem::Bus;
        item.members.append(member);
    }
    return item;
}

} // namespace

/// The modules that "tarn export simulation" writes, in simulations with Icarus and Verilator.
class TestExportedCores : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void sensorHub_data();
    void sensorHub();
    void sensorHubStartsWithTheInitialValues();
    void packetFilter();
    void namesReachTheirBits_data();
    void namesReachTheirBits();
    void vhdlIsLeftOut();

private:
    QString exported(const QStringList &arguments, const QString &file);
    QString zooBench(const QList<ListedSignal> &list);

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestExportedCores::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

/// Runs the tool; the path of the module, empty when that fails.
QString TestExportedCores::exported(const QStringList &arguments, const QString &file)
{
    const QString path = m_folder->filePath(file);
    const ToolRun run =
        runTool(QStringList{"export", "simulation"} + arguments + QStringList{"-o", path});
    if (run.exitCode == 0)
        return path;
    QTest::qFail(qPrintable(run.errors), __FILE__, __LINE__);
    return QString();
}

void TestExportedCores::sensorHub_data()
{
    QTest::addColumn<bool>("verilator");
    QTest::newRow("Icarus") << false;
    QTest::newRow("Verilator") << true;
}

/// The test bench passes with the module in place of its own debug cores, and the module sees what
/// a monitor sees.
void TestExportedCores::sensorHub()
{
    QFETCH(bool, verilator);
    Simulation simulation = simulationOf(exampleProject("sensorhub"), "hub_tb");
    const QString module =
        exported({examplePath("sensorhub", "sensorhub.tarn"), "--tb-path", "hub_tb.dut",
                  "--language", verilator ? "systemverilog" : "verilog"},
                 verilator ? "probes.sv" : "probes.v");
    simulation.files +=
        {examplePath("sensorhub", "tb/kx_primitives.v"), examplePath("sensorhub", "tb/hub_tb.v"),
         module, dataPath("hub_monitor.v")};
    const Run built = verilator ? buildWithVerilator(simulation, m_folder->path())
                                : buildWithIcarus(simulation, {"tarn_probes", "hub_monitor"},
                                                  "2005", m_folder->path());
    QVERIFY2(built.exitCode == 0, qPrintable(built.output));
    const Run result =
        verilator ? runWithVerilator(m_folder->path()) : runWithIcarus(m_folder->path());
    QVERIFY2(result.exitCode == 0 && verdict(result) == "PASS", qPrintable(result.output));

    const Values values = valuesOf(result, "seen");
    QVERIFY(values.seen.size() > 800);
    QCOMPARE(values.seen, values.expected);
    QVERIFY(values.seen.first().endsWith("0 10000000 0 0"));
    // The bench has no reason to change all of the 91 bits: there is a single error, for example.
    QVERIFY(constantBits(values.seen).size() < 35);
}

/// With another initial value the debug core forces the LEDs from the begin on.
void TestExportedCores::sensorHubStartsWithTheInitialValues()
{
    QByteArray config = readFile(examplePath("sensorhub", "sensorhub.tarn"));
    const QByteArray before = "<ProbeOut index=\"0\" initialValue=\"0x0\">\n"
                              "            <Signal name=\"hub_top/dbg_duty_force\"";
    QCOMPARE(config.count(before), 1);
    config.replace(before, QByteArray(before).replace("0x0", "0x1"));
    writeFile(m_folder->filePath("forced.tarn"), config);

    Simulation simulation = simulationOf(exampleProject("sensorhub"), "hub_tb");
    const QString module = exported({examplePath("sensorhub", "sensorhub.json"),
                                     m_folder->filePath("forced.tarn"), "--tb-path", "hub_tb.dut"},
                                    "probes.sv");
    simulation.files +=
        {examplePath("sensorhub", "tb/kx_primitives.v"), examplePath("sensorhub", "tb/hub_tb.v"),
         module, dataPath("hub_monitor.v")};
    simulation.options.append("-Ptarn_probes.SHOW_CHANGES=1");
    const Run built =
        buildWithIcarus(simulation, {"tarn_probes", "hub_monitor"}, "2012", m_folder->path());
    QVERIFY2(built.exitCode == 0, qPrintable(built.output));
    const Run result = runWithIcarus(m_folder->path());
    QCOMPARE(verdict(result), QString("FAIL"));
    QVERIFY2(result.output.contains("wrong: LED 0 off"), qPrintable(result.output));
    QVERIFY(result.output.contains(" core 0 Probe Out 1: 32\n"));
    // The value of the other port, in all the LEDs.
    const Values values = valuesOf(result, "seen");
    QVERIFY(values.seen.first().endsWith("1 10000000 0 0"));
    QVERIFY(values.expected.first().section(' ', 3, 3).startsWith("10000000"));
}

/// The same for SystemVerilog. One program has both initial values.
void TestExportedCores::packetFilter()
{
    Simulation simulation = simulationOf(exampleProject("packetfilter"), "pf_tb");
    const QString module = exported(
        {examplePath("packetfilter", "packetfilter.tarn"), "--tb-path=pf_tb.dut"}, "probes.sv");
    QByteArray text = readFile(module);
    QCOMPARE(text.count(" = 3'h1;"), 2);
    text.replace(" = 3'h1;", " = $test$plusargs(\"forced\") != 0 ? 3'h6 : 3'h1;");
    writeFile(module, text);
    simulation.files +=
        {examplePath("packetfilter", "tb/pf_tb.sv"), module, dataPath("pf_monitor.sv")};
    const Run built = buildWithVerilator(simulation, m_folder->path());
    QVERIFY2(built.exitCode == 0, qPrintable(built.output));
    const Run result = runWithVerilator(m_folder->path());
    QVERIFY2(result.exitCode == 0 && verdict(result) == "PASS", qPrintable(result.output));

    const Values values = valuesOf(result, "seen");
    QVERIFY(values.seen.size() > 800);
    QCOMPARE(values.seen, values.expected);
    QVERIFY(values.seen.first().endsWith("0000 001"));

    const Run forced = runWithVerilator(m_folder->path(), {"+forced"});
    QCOMPARE(verdict(forced), QString("FAIL"));
    QVERIFY(valuesOf(forced, "seen").expected.first().endsWith("0000 110"));
}

void TestExportedCores::namesReachTheirBits_data()
{
    QTest::addColumn<QString>("design");
    QTest::addColumn<QString>("list");
    QTest::addColumn<bool>("verilator");
    QTest::newRow("SystemVerilog, Icarus") << "zoo.sv"
                                           << "zoo.txt" << false;
    QTest::newRow("SystemVerilog, Verilator") << "zoo.sv"
                                              << "zoo.txt" << true;
    QTest::newRow("Verilog, Icarus") << "zoo.v"
                                     << "zoo_verilog.txt" << false;
}

/// A test bench that sets the Probe Out ports to random values and prints all bits of the ports in
/// @p list and, behind them, the same bits under their names as written by hand.
QString TestExportedCores::zooBench(const QList<ListedSignal> &list)
{
    QStringList ports[2];
    QStringList names[2];
    for (int i = 0; i < list.size(); ++i) {
        const bool isOut = list.at(i).type == TARN::ProbeTypeOut;
        ports[isOut].append(
            QStringLiteral("tarn_probes.core%1.%2%3").arg(i % 2).arg(isOut ? "out" : "in").arg(i));
        names[isOut].append("\\the/dut[1] ." + list.at(i).verilog);
    }
    QString text = "`timescale 1ns / 1ps\nmodule zoo_tb;\n    reg clk = 0;\n"
                   "    always #5 clk = !clk;\n    zoo \\the/dut[1] (.clk(clk));\n"
                   "    initial begin\n        #6;\n        repeat (60) begin\n";
    for (int i = 0; i < list.size(); ++i) {
        if (list.at(i).type == TARN::ProbeTypeOut)
            text += QStringLiteral("            tarn_probes.core%1.set(%2, $random);\n")
                        .arg(i % 2)
                        .arg(i);
    }
    text += "            #10;\n";
    for (const int isOut : {0, 1})
        text += QStringLiteral("            $display(\"%1 %b | %b\", {%2}, {%3});\n")
                    .arg(isOut ? "out" : "in", ports[isOut].join(", "), names[isOut].join(", "));
    return text + "        end\n        $finish;\n    end\nendmodule\n";
}

/// Every bit of signals with all kinds of names: the module reads and drives the same bits as a
/// test bench in which the names are written by hand.
void TestExportedCores::namesReachTheirBits()
{
    QFETCH(QString, design);
    QFETCH(QString, list);
    QFETCH(bool, verilator);
    const QList<ListedSignal> listed = listedSignals(list);
    QVERIFY(listed.size() > 20);
    TARN::TarnCore first(0);
    TARN::TarnCore second(1);
    first.syncUserClock = true;
    first.userClock = "zoo/clk";
    for (int i = 0; i < listed.size(); ++i) {
        TARN::TarnCore &core = i % 2 == 0 ? first : second;
        TARN::ProbeIn *port = nullptr;
        if (listed.at(i).type == TARN::ProbeTypeIn) {
            core.addProbeIn(i);
            port = core.probeIns.last();
        } else {
            core.addProbeOut(i);
            port = core.probeOuts.last();
        }
        port->signals.append(signalItem(listed.at(i).name));
    }
    const QString config = m_folder->filePath("zoo.tarn");
    QVERIFY(TARN::writeTARNConfigToXml({&first, &second}, config));
    writeFile(m_folder->filePath("zoo_tb.v"), zooBench(listed).toUtf8());

    const bool isVerilog = design.endsWith(".v");
    const QStringList designArguments =
        isVerilog ? QStringList{dataPath(design), "--language", "1364-2005"}
                  : QStringList{dataPath(design)};
    const QString module = exported(
        designArguments + QStringList{config, "--top", "zoo", "--tb-path", "zoo_tb.\\the/dut[1] ",
                                      "--language", isVerilog ? "verilog" : "systemverilog"},
        isVerilog ? "probes.v" : "probes.sv");
    const Simulation simulation{verilator ? QStringList{"-Wno-MULTIDRIVEN"} : QStringList(),
                                {dataPath(design), m_folder->filePath("zoo_tb.v"), module},
                                "zoo_tb"};
    const Run built = verilator ? buildWithVerilator(simulation, m_folder->path())
                                : buildWithIcarus(simulation, {"tarn_probes"},
                                                  isVerilog ? "2005" : "2012", m_folder->path());
    QVERIFY2(built.exitCode == 0, qPrintable(built.output));
    const Run result =
        verilator ? runWithVerilator(m_folder->path()) : runWithIcarus(m_folder->path());
    QVERIFY2(result.exitCode == 0, qPrintable(result.output));
    for (const char *mark : {"in", "out"}) {
        const Values values = valuesOf(result, mark);
        QCOMPARE(values.seen.size(), 60);
        QCOMPARE(values.seen, values.expected);
        QCOMPARE(constantBits(values.seen), QList<int>());
    }
}

/// The top of the motor drive is in VHDL, and so nothing in it has a Verilog name.
void TestExportedCores::vhdlIsLeftOut()
{
    const QString path = m_folder->filePath("probes.sv");
    const ToolRun tool =
        runTool({"export", "simulation", examplePath("motordrive", "motordrive.tarn"), "-o", path});
    QCOMPARE(tool.exitCode, 0);
    QVERIFY2(tool.errors.startsWith("tarn: warning: "), qPrintable(tool.errors));
    const QByteArray text = readFile(path);
    QVERIFY(text.contains("is in VHDL or below it"));
    QVERIFY(!text.contains("assign "));

    // All ports are there, with their widths and without values.
    writeFile(m_folder->filePath("tb.sv"),
              "module tb; initial begin #1 $display(\"in %b\", tarn_probes.core0.in0); "
              "tarn_probes.core0.set(0, 1); $display(\"out %b\", tarn_probes.core0.out0); end "
              "endmodule\n");
    const Simulation simulation{{}, {m_folder->filePath("tb.sv"), path}, "tb"};
    const Run built = buildWithIcarus(simulation, {"tarn_probes"}, "2012", m_folder->path());
    QVERIFY2(built.exitCode == 0, qPrintable(built.output));
    const Run result = runWithIcarus(m_folder->path());
    QVERIFY2(QRegularExpression("in x+\nout 0*1\n").match(result.output).hasMatch(),
             qPrintable(result.output));
}

TARN_TEST_MAIN(TestExportedCores)
#include "tst_exportedcores.moc"
