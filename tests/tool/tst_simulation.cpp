// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "toolrun.h"

#include <model/tarnconfig.h>
#include <model/tarncore.h>
#include <netweir/hierachy.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnet.h>
#include <support/files.h>
#include <support/processortime.h>
#include <support/testcase.h>
#include <tool/simulation/simulationmodule.h>

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace NETWEIR;
using namespace TarnTest;
using Tool::SimulationModule;
using Tool::SimulationOptions;

namespace {

SimulationOptions options(bool isSystemVerilog = true)
{
    return {isSystemVerilog, "tarn_probes", "tb.dut", "x.tarn"};
}

TARN::SignalItem net(const QString &name)
{
    TARN::SignalItem item;
    item.name = name;
    item.kind = TARN::SignalItem::Net;
    return item;
}

TARN::SignalItem bus(const QString &name, const QStringList &members)
{
    TARN::SignalItem item = net(name);
    item.kind = TARN::SignalItem::Bus;
    for (const QString &member : members)
        item.members.append(net(member));
    return item;
}

/// A small design: a bus, an escaped net, a memory, a driven net, and an instance in VHDL with an
/// instance in Verilog.
std::unique_ptr<RtlNetlist> smallDesign()
{
    NetlistBuilder builder("top");
    builder.addNet(builder.top(), "clk");
    builder.addBus(builder.top(), "data", 3, 0);
    builder.addBus(builder.top(), "g[0].up", 0, 3);
    builder.setIdentifiers(builder.addNet(builder.top(), "a.b"), {3});
    builder.addNet(builder.top(), "memory", {true, true});
    builder.addNet(builder.top(), "driven", {false, true});
    builder.addBus(
        builder.top(), "half", 1, 0,
        {{false, true, ProcessWrites::Nonblocking}, {false, false, ProcessWrites::Nonblocking}});
    builder.addNet(builder.top(), "now", {false, false, ProcessWrites::Blocking});
    Hierachy *vhdl = builder.addHierachy(builder.top(), "v", "vhdl");
    builder.setVhdl(vhdl, true);
    builder.addNet(vhdl, "s");
    Hierachy *below = builder.addHierachy(vhdl, "u", "sub");
    builder.setVhdl(below, false);
    builder.addBus(below, "w", 1, 0);
    return builder.take();
}

/// The lines of @p text between the one that begins with @p first and the next empty line, without
/// the blanks in front of them.
QString section(const QByteArray &text, const QString &first)
{
    const QStringList lines = QString::fromUtf8(text).split('\n');
    QStringList found;
    for (const QString &line : lines) {
        if (!found.isEmpty() && line.isEmpty())
            break;
        if (!found.isEmpty() || line.trimmed().startsWith(first))
            found.append(line.trimmed());
    }
    return found.join('\n');
}

} // namespace

/// The module for simulations as text, and the command that writes it.
class TestSimulation : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void probeInFollowsItsSignals();
    void probeOutDrivesItsSignals();
    void probeOutWaitsForTheUserClock();
    void bitsAreSelectedInTheOrderOfTheirBus_data();
    void bitsAreSelectedInTheOrderOfTheirBus();
    void tasksGoByPortNumber();
    void verilogHasNoSystemVerilog();
    void misfitsAreNamed();
    void clockIsMissedWhenNoneIsChosen();
    void namesOfTheModuleAreKnown();
    void vhdlIsCountedAndCommented();
    void textsCannotLeaveTheirComments();
    void largestConfigurationTakesSeconds();
    void commandRefusesWhatDoesNotFit_data();
    void commandRefusesWhatDoesNotFit();
    void commandLeavesOutWhatDoesNotFit();
};

void TestSimulation::probeInFollowsItsSignals()
{
    const auto netlist = smallDesign();
    TARN::TarnCore core(0);
    core.addProbeIn(0);
    core.probeIns[0]->signals = {
        bus("top/data[3:0]", {"top/data[3]", "top/data[2]", "top/data[1]", "top/data[0]"}),
        net("top/a.b"), net("top/driven"), net("top/data[2]")};
    core.addProbeIn(1);
    const SimulationModule module({&core}, netlist.get(), options());
    QCOMPARE(module.misfits(), QStringList());
    QCOMPARE(section(module.text(), "wire [6:0] in0"),
             QString("wire [6:0] in0 = {\n"
                     "tb.dut.data[3:0], // [6:3] top/data[3:0]\n"
                     "tb.dut.\\a.b , // [2] top/a.b\n"
                     "tb.dut.driven, // [1] top/driven\n"
                     "tb.dut.data[2] // [0] top/data[2]\n"
                     "};\n"
                     "always @(in0) if (show_changes)\n"
                     "$display(\"%0t core 0 Probe In 0: %h\", $time, in0);"));
    QVERIFY(module.text().contains("// Probe In 1 has no signals."));
}

void TestSimulation::probeOutDrivesItsSignals()
{
    const auto netlist = smallDesign();
    TARN::TarnCore core(3);
    core.userClock = "top/clk";
    core.addProbeOut(0);
    core.probeOuts[0]->signals = {bus("top/data[3:0]", {"top/data[3]", "top/data[2]"}),
                                  net("top/half[0]"), net("top/now")};
    core.probeOuts[0]->initialValue = "0xA";
    const SimulationModule module({&core}, netlist.get(), options());
    QCOMPARE(module.misfits(), QStringList());
    QVERIFY(module.text().contains("if (1) begin : core3"));
    QCOMPARE(section(module.text(), "logic [3:0] out0"),
             QString("logic [3:0] out0 = 4'hA;\n"
                     "assign tb.dut.data[3:2] = out0[3:2]; // [3:2] top/data[3:0]\n"
                     "initial tb.dut.half[0] = out0[1]; // [1] top/half[0]\n"
                     "always @(out0) tb.dut.half[0] <= out0[1];\n"
                     "initial tb.dut.now = out0[0]; // [0] top/now\n"
                     "always @(out0) tb.dut.now = out0[0];\n"
                     "always @(out0) if (show_changes)\n"
                     "$display(\"%0t core 3 Probe Out 0: %h\", $time, out0);"));
}

void TestSimulation::probeOutWaitsForTheUserClock()
{
    const auto netlist = smallDesign();
    TARN::TarnCore core(0);
    core.userClock = "top/clk";
    core.syncUserClock = true;
    core.addProbeOut(0);
    core.probeOuts[0]->signals = {net("top/a.b")};
    core.probeOuts[0]->initialValue = "0x1";
    const SimulationModule module({&core}, netlist.get(), options());
    QVERIFY(module.text().contains("wire user_clock = tb.dut.clk;"));
    QVERIFY(section(module.text(), "logic [0:0] out0 ")
                .startsWith("logic [0:0] out0 = 1'h1;\n"
                            "logic [0:0] out0_synced = 1'h1;\n"
                            "always_ff @(posedge user_clock) out0_synced <= out0;\n"
                            "assign tb.dut.\\a.b  = out0_synced[0];"));
}

void TestSimulation::bitsAreSelectedInTheOrderOfTheirBus_data()
{
    QTest::addColumn<QStringList>("members");
    QTest::addColumn<QString>("expected");
    const QString up = "top/g[0].up[%1]";
    QTest::newRow("all") << QStringList{up.arg(0), up.arg(1), up.arg(2), up.arg(3)}
                         << "tb.dut.g[0].up[0:3]";
    QTest::newRow("some") << QStringList{up.arg(1), up.arg(2)} << "tb.dut.g[0].up[1:2]";
    QTest::newRow("gap") << QStringList{up.arg(0), up.arg(2)}
                         << "tb.dut.g[0].up[0] tb.dut.g[0].up[2]";
    QTest::newRow("backwards") << QStringList{up.arg(1), up.arg(0)}
                               << "tb.dut.g[0].up[1] tb.dut.g[0].up[0]";
    QTest::newRow("two buses") << QStringList{up.arg(3), "top/data[3]", "top/data[2]"}
                               << "tb.dut.g[0].up[3] tb.dut.data[3:2]";
    QTest::newRow("the same again")
        << QStringList{up.arg(1), up.arg(1)} << "tb.dut.g[0].up[1] tb.dut.g[0].up[1]";
}

void TestSimulation::bitsAreSelectedInTheOrderOfTheirBus()
{
    QFETCH(QStringList, members);
    const auto netlist = smallDesign();
    TARN::TarnCore core(0);
    core.addProbeIn(0);
    core.probeIns[0]->signals = {bus("some[9:0]", members)};
    Tool::SimulationNets nets(netlist.get(), "tb.dut", {&core});
    QStringList references;
    int width = 0;
    for (const Tool::SimulatedBits &bits :
         nets.bitsOf(core.probeIns[0]->signals[0], TARN::ProbeTypeIn)) {
        references.append(bits.reference);
        width += bits.width;
    }
    QTEST(references.join(' '), "expected");
    QCOMPARE(width, members.size());
}

void TestSimulation::tasksGoByPortNumber()
{
    const auto netlist = smallDesign();
    TARN::TarnCore core(0);
    core.addProbeIn(0);
    core.probeIns[0]->signals = {net("top/clk")};
    core.addProbeIn(1);
    core.probeIns[1]->signals = {bus("top/data[3:0]", {"top/data[3]", "top/data[2]"})};
    core.addProbeOut(1);
    core.probeOuts[0]->signals = {net("top/a.b")};
    const QByteArray text = SimulationModule({&core}, netlist.get(), options()).text();
    QCOMPARE(section(text, "task automatic set"),
             QString("task automatic set(input int port, input logic [0:0] value);\n"
                     "case (port)\n1: out1 = value[0:0];\n"
                     "default: $display(\"core 0 has no Probe Out %0d\", port);\n"
                     "endcase\nendtask"));
    QCOMPARE(section(text, "function automatic"),
             QString("function automatic logic [1:0] get(input int port);\n"
                     "case (port)\n0: get = {1'd0, in0};\n1: get = in1;\n"
                     "default: get = {2{1'bx}};\nendcase\nendfunction"));
    QVERIFY(section(text, "task automatic show")
                .contains("1: begin\n"
                          "$display(\"%0t core 0 Probe In 1: %h\", $time, in1);\n"
                          "$display(\"    top/data[3:0] = %h\", in1[1:0]);\n"
                          "$display(\"%0t core 0 Probe Out 1: %h\", $time, out1);\n"
                          "$display(\"    top/a.b = %h\", out1[0]);\nend\n"));
}

void TestSimulation::verilogHasNoSystemVerilog()
{
    const auto netlist = smallDesign();
    TARN::TarnCore core(0);
    core.userClock = "top/clk";
    core.syncUserClock = true;
    core.addProbeIn(0);
    core.probeIns[0]->signals = {net("top/clk")};
    core.addProbeOut(0);
    core.probeOuts[0]->signals = {net("top/a.b")};
    const QString text =
        QString::fromUtf8(SimulationModule({&core}, netlist.get(), options(false)).text());
    const QRegularExpression words("\\b(logic|int|automatic|always_ff)\\b");
    QVERIFY2(!words.match(text).hasMatch(), qPrintable(words.match(text).captured()));
    QVERIFY(text.contains("reg [0:0] out0 = 1'h0;"));
    QVERIFY(text.contains("generate\n"));
}

void TestSimulation::misfitsAreNamed()
{
    const auto netlist = smallDesign();
    TARN::TarnCore core(0);
    core.userClock = "top/gone";
    core.syncUserClock = true;
    core.addProbeIn(0);
    core.probeIns[0]->signals = {net("top/memory"), net("top/none"),
                                 bus("top/x[2:0]", {"top/x[2]", "top/x[1]", "top/data[0]"})};
    core.addProbeOut(0);
    core.probeOuts[0]->signals = {net("top/driven"), net("top/clk"), net("top/clk")};
    const SimulationModule module({&core}, netlist.get(), options());
    QCOMPARE(module.misfits().join('\n'),
             QString("tarn_0, user clock: top/gone is not in the design\n"
                     "tarn_0, Probe In0: top/memory cannot be read\n"
                     "tarn_0, Probe In0: top/none is not in the design\n"
                     "tarn_0, Probe In0: top/x[2] (and 1 bit after it) is not in the design\n"
                     "tarn_0, Probe Out0: top/driven has a driver or is no net that can be "
                     "driven\n"
                     "tarn_0, Probe Out0: top/clk is driven by another Probe Out port"));
    // What is left keeps its place, and without a clock the port drives at once.
    QVERIFY(section(module.text(), "wire [4:0] in0")
                .contains("1'bx, // [4] top/memory cannot be read\n"
                          "1'bx, // [3] top/none is not in the design\n"
                          "2'bxx, // [2:1] top/x[2] is not in the design\n"
                          "tb.dut.data[0] // [0] top/data[0]\n"));
    QVERIFY(section(module.text(), "logic [2:0] out0")
                .contains("// [2] top/driven has a driver or is no net that can be driven\n"
                          "assign tb.dut.clk = out0[1]; // [1] top/clk\n"
                          "// [0] top/clk is driven by another Probe Out port\n"));
}

void TestSimulation::clockIsMissedWhenNoneIsChosen()
{
    const auto netlist = smallDesign();
    TARN::TarnCore core(2);
    core.syncUserClock = true;
    const SimulationModule module({&core}, netlist.get(), options());
    QCOMPARE(module.misfits(), QStringList("tarn_2, user clock: none is chosen"));
}

/// A name of the design that begins with one of these would lead into the module.
void TestSimulation::namesOfTheModuleAreKnown()
{
    TARN::TarnCore core(1);
    core.addProbeIn(2);
    core.addProbeOut(3);
    for (const char *name : {"core1", "in2", "out3", "out3_synced", "user_clock", "set", "get",
                             "show", "show_changes", "SHOW_CHANGES"})
        QVERIFY2(SimulationModule::declares(name, {&core}), name);
    for (const char *name : {"core0", "core", "in3", "in2_synced", "out2", "tb", "port", "value"})
        QVERIFY2(!SimulationModule::declares(name, {&core}), name);
}

void TestSimulation::vhdlIsCountedAndCommented()
{
    const auto netlist = smallDesign();
    TARN::TarnCore core(0);
    core.addProbeIn(0);
    core.probeIns[0]->signals = {net("top/v/s"),
                                 bus("top/v/u/w[1:0]", {"top/v/u/w[1]", "top/v/u/w[0]"})};
    const SimulationModule module({&core}, netlist.get(), options());
    QCOMPARE(module.misfits(), QStringList());
    QCOMPARE(module.bitsInVhdl(), 3);
    QVERIFY(section(module.text(), "wire [2:0] in0")
                .contains("1'bx, // [2] top/v/s is in VHDL or below it\n"
                          "2'bxx // [1:0] top/v/u/w[1:0] is in VHDL or below it\n"));
}

/// Names of a file are the user's. No line of the module comes from them.
void TestSimulation::textsCannotLeaveTheirComments()
{
    const auto netlist = smallDesign();
    TARN::TarnCore core(0);
    core.addProbeIn(0);
    core.probeIns[0]->signals = {net("a\nendmodule\nb\\"), bus("\"%d\n", {"top/clk"})};
    SimulationOptions withSource = options();
    withSource.source = "x\ninitial $finish;.tarn";
    const QByteArray text = SimulationModule({&core}, netlist.get(), withSource).text();
    QCOMPARE(text.count("\nendmodule"), 1);
    QVERIFY(!text.contains("\ninitial $finish"));
    QVERIFY(text.contains("b\\. is not in the design\n"));
    QVERIFY(text.contains("$display(\"    \\\"%%d\\\\x0a = %h\", in0[0]);"));
}

/// All limits of a file at once: 16 cores with 128 ports of 256 bits. Linear, so it takes a second
/// or two also with a million nets.
void TestSimulation::largestConfigurationTakesSeconds()
{
    NetlistBuilder builder("top");
    QList<RtlNet *> all;
    for (int i = 0; i < 16 * 128 * 256; ++i)
        all.append(builder.addNet(builder.top(), "n" + QString::number(i)));
    const auto netlist = builder.take();
    std::vector<std::unique_ptr<TARN::TarnCore>> owned;
    QList<TARN::TarnCore *> cores;
    int next = 0;
    for (int i = 0; i < 16; ++i) {
        owned.push_back(std::make_unique<TARN::TarnCore>(i));
        TARN::TarnCore *core = owned.back().get();
        cores.append(core);
        for (int port = 0; port < 64; ++port) {
            core->addProbeIn(port);
            core->addProbeOut(port);
            for (int bit = 0; bit < 256; ++bit) {
                core->probeIns[port]->signals.append(net(all.at(next++)->fullPathName()));
                core->probeOuts[port]->signals.append(net(all.at(next++)->fullPathName()));
            }
        }
    }
    const qint64 before = processorNanoseconds();
    const SimulationModule module(cores, netlist.get(), options());
    const double seconds = double(processorNanoseconds() - before) / 1e9;
    qInfo("%.2f s, %.1f MB", seconds, module.text().size() / 1e6);
    QCOMPARE(module.misfits(), QStringList());
    QCOMPARE(module.text().count("assign tb.dut.n"), 16 * 64 * 256);
    QVERIFY2(seconds < 20, "with sanitizers too");
}

void TestSimulation::commandRefusesWhatDoesNotFit_data()
{
    QTest::addColumn<QByteArray>("config");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    const QByteArray core = "<Core index=\"0\"><ProbeIn index=\"0\"><Signal name=\"top/%1\" "
                            "kind=\"net\"/></ProbeIn></Core>";
    const QByteArray good = QByteArray(core).replace("%1", "a");
    QTest::newRow("missing net") << QByteArray(core).replace("%1", "gone") << QStringList()
                                 << "tarn_0, Probe In0: top/gone is not in the design\n"
                                    "tarn: the configuration does not fit the design; correct it, "
                                    "or leave these signals out with --skip-missing\n";
    QTest::newRow("path") << good << QStringList{"--tb-path", "tb/dut"}
                          << "--tb-path takes the path of an instance, not tb/dut; write it as in "
                             "Verilog: hub_tb.dut\n";
    QTest::newRow("module") << good << QStringList{"--module", "a.b"}
                            << "--module takes the name of a module, not a.b; give a Verilog "
                               "identifier\n";
    QTest::newRow("path hidden by a core")
        << good << QStringList{"--tb-path", "core0.dut"}
        << "names that begin with \"core0\" stay in the module, which has that name itself; "
           "instantiate the design in a test bench of another name, and give the path with "
           "--tb-path\n";
    QTest::newRow("module like the top") << good << QStringList{"--module", "top"}
                                         << "names that begin with \"top\" stay in the module, "
                                            "which has that name itself; give it another one with "
                                            "--module\n";
    QTest::newRow("negative number") << QByteArray("<Core index=\"-3\"/>") << QStringList()
                                     << "the number of core -3 is negative; save it in the editor, "
                                        "which numbers them\n";
    QTest::newRow("two cores") << good + good << QStringList()
                               << "the file has two of core 0; save it in the editor, which "
                                  "numbers them\n";
    QTest::newRow("two ports") << QByteArray("<Core index=\"1\"><ProbeOut index=\"2\"/>"
                                             "<ProbeOut index=\"2\"/></Core>")
                               << QStringList()
                               << "the file has two of core 1, Probe Out 2; save it in the editor, "
                                  "which numbers them\n";
}

void TestSimulation::commandRefusesWhatDoesNotFit()
{
    QFETCH(QByteArray, config);
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    const QTemporaryDir folder;
    const QString file = folder.filePath("x.tarn");
    const QString output = folder.filePath("x.sv");
    writeFile(folder.filePath("top.v"), "module top(input a); endmodule\n");
    writeFile(file, "<?xml version=\"1.0\"?><TARN_CONFIG><Version>1.0</Version>" + config +
                        "</TARN_CONFIG>\n");
    writeFile(output, "before\n");
    const ToolRun run =
        runTool(QStringList{"export", "simulation", folder.filePath("top.v"), file, "-o", output} +
                arguments);
    QCOMPARE(run.exitCode, 2);
    QCOMPARE(run.errors, "tarn: " + message);
    QCOMPARE(readFile(output), QByteArray("before\n"));
}

void TestSimulation::commandLeavesOutWhatDoesNotFit()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("x.tarn");
    writeFile(folder.filePath("top.v"), "module top(input a); endmodule\n");
    TARN::TarnCore core(0);
    core.addProbeIn(0);
    core.probeIns[0]->signals = {net("top/a")};
    for (int i = 0; i < 30; ++i)
        core.probeIns[0]->signals.append(net("top/gone" + QString::number(i)));
    QVERIFY(TARN::writeTARNConfigToXml({&core}, file));
    const ToolRun run = runTool({"export", "simulation", folder.filePath("top.v"), file,
                                 "--skip-missing", "--module", "my_probes"});
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.errors.startsWith("tarn: warning: tarn_0, Probe In0: top/gone0 is not in the "
                                  "design; left out\n"));
    QVERIFY(run.errors.endsWith("tarn: warning: and 10 more\n"));
    QVERIFY(run.output.contains("\nmodule my_probes #("));
    QVERIFY(run.output.contains("            top.a, // [30] top/a\n"));
}

TARN_TEST_MAIN(TestSimulation)
#include "tst_simulation.moc"
