// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "exampleproject.h"
#include "simulatorrun.h"

#include <support/files.h>
#include <support/testcase.h>
#include <te/teconstants.h>

#include <QApplication>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace TarnTest;

namespace {

/// A change of the design that its test bench has to detect.
struct Mutation
{
    const char *name;
    const char *file;
    const char *from;
    const char *to;
};

const Mutation sensorHubMutations[] = {
    {"wrong CRC polynomial", "crc8.v", "8'h07", "8'h09"},
    {"bits received in the wrong order", "uart_rx.v", "{majority, shift[7:1]}",
     "{shift[6:0], majority}"},
    {"no stop bit", "uart_tx.v", "{1'b1, data, 1'b0}", "{1'b0, data, 1'b0}"},
    {"FIFO loses the write address", "sync_fifo.v", "mem[wr_ptr[ADDR_WIDTH-1:0]]", "mem[0]"},
    {"CRC not compared", "frame_rx.v", "crc == byte_data", "1'b1"},
    {"bad frames not counted", "frame_rx.v", "if (!crc_ok)", "if (1'b0)"},
    {"identity register writable", "reg_file.v", "value = `HUB_ID;",
     "begin value = `HUB_ID; writable = 1'b1; end"},
    {"full duty misses a step", "pwm_channel.v", "count < active_duty",
     "count < active_duty && count != 8'd254"},
    {"contacts followed at once", "debouncer.v", "stable == 3'd7", "stable == 3'd0"},
    {"last bit of the converter lost", "spi_master.v", "bits_left == 8'd1", "bits_left == 8'd2"},
    {"mean of four divided by two", "adc_sampler.v", "next_sum[13:2]", "next_sum[12:1]"},
    {"no word crosses the clock domains", "cdc_bus.v", "dst_data <= held", "dst_data <= dst_data"},
    {"one glyph wrong", "seven_seg.v", "7'b1111100", "7'b1111111"},
    {"debug core cannot force the duty", "hub_top.v", "dbg_duty_force ? dbg_duty : duty",
     "1'b0 ? dbg_duty : duty"},
    {"debug core cannot force sampling", "hub_top.v", " || dbg_sample_force", ""},
    {"lamp test not connected", "hub_top.v", ".lamp_test (dbg_lamp_test)", ".lamp_test (1'b0)"},
};

// Expressions, each replaced by a choice at run time, so that one build serves all.
const Mutation packetFilterMutations[] = {
    {"lower end of a range excluded", "pf_match_pkg.sv", "header.port >= rule.port_low",
     "header.port > rule.port_low"},
    {"kind compared without mask", "pf_match_pkg.sv",
     "((header.kind ^ rule.kind) & rule.kind_mask) == '0", "header.kind == rule.kind"},
    {"the milder verdict wins", "pf_match_pkg.sv", "a < b ? a : b", "a < b ? b : a"},
    {"runts pass", "pf_matcher.sv", "rule_matches(rules[r], header) && !runt",
     "rule_matches(rules[r], header)"},
    {"dropped frames stay in the buffer", "pf_frame_buffer.sv",
     "decision != VERDICT_DROP && !overflow", "!overflow"},
    {"frames longer than the buffer pass", "pf_frame_buffer.sv",
     "decision != VERDICT_DROP && !overflow", "decision != VERDICT_DROP"},
    {"the mark is lost", "pf_frame_buffer.sv", "decision == VERDICT_MARK", "1'b0"},
    {"register stage loses a word", "axis_skid.sv", "held_valid || in.valid", "in.valid"},
    {"lanes interrupt each other", "pf_arbiter.sv", "out.valid && out.ready && out.last",
     "out.valid && out.ready"},
    {"lane numbers are lost", "pf_arbiter.sv", "{current, lane_data[current]}",
     "{2'd0, lane_data[current]}"},
    {"counters count every cycle", "pf_lane.sv", "e == 0 ? passed : dropped", "1'b1"},
    {"debug core cannot force the verdict", "pf_lane.sv",
     "dbg_force_verdict ? verdict_e'(dbg_verdict) : matched", "matched"},
    {"debug core cannot block", "pf_top.sv", "dbg_block[n]", "1'b0"},
};

/// A change of the motor drive, and the signals that a debug core would force: their initial values
/// in the design are the only way to reach them.
struct MotorMutation
{
    const char *name;
    const char *file;
    const char *from;
    const char *to;
    const char *forced = "";
};

const MotorMutation motorDriveMutations[] = {
    {"steps backwards are lost", "quadrature_decoder.vhd", "-1 when \"11\"", "0 when \"11\""},
    {"impossible transitions not counted", "quadrature_decoder.vhd", "Errors + 1", "Errors"},
    {"a turn is one step shorter", "quadrature_decoder.vhd", "mod STEPS_PER_TURN",
     "mod (STEPS_PER_TURN - 1)"},
    {"the filter amplifies", "lowpass.vhd", "Sample - Filtered",
     "Sample - shift_right(Filtered, 1)"},
    {"no integral part", "pi_controller.vhd", "Integral + to_integer(Increment)", "Integral"},
    {"deviation with the wrong sign", "pi_controller.vhd",
     "resize(Setpoint, Deviation'length) - Measured",
     "resize(Measured, Deviation'length) - Setpoint"},
    {"speed jumps instead of rising", "drive_control.vhd", "minimum(Present + RAMP_STEP, Goal)",
     "Goal"},
    {"supplies not charged", "drive_control.vhd", "Charged = CHARGE_TICKS", "true"},
    {"always forwards", "drive_control.vhd", "Command.Backward = '1'", "Command.Backward = 'X'"},
    {"a fault waits for the next tick", "drive_control.vhd", "if Fault = '1' then",
     "if Fault = '1' and Tick = '1' then"},
    {"field turns backwards", "modulator.vhd", "FieldAngle - fraction(P, PHASES)",
     "FieldAngle + fraction(P, PHASES)"},
    {"six steps instead of sine waves", "modulator.vhd", "Shape : case MODULATION generate",
     "Shape : case modulation_t'(SixStep) generate"},
    {"identity register writable", "register_file.vhd", "when REG_IDENTITY => ReadData <= IDENTITY",
     "when REG_IDENTITY => ReadData <= Stored(REG_SPEED)"},
    {"faults are cleared for ever", "register_file.vhd", "Stored(REG_CONTROL)(2) <= '0'",
     "Stored(REG_CONTROL)(2) <= Stored(REG_CONTROL)(2)"},
    {"faults are not kept", "motor_top.vhd", "Command.ClearFault = '1'", "Sync(1) = '1'"},
    {"no dead time", "dead_time.vhd", "Remaining <= 1", "Remaining <= CLOCKS"},
    {"debug core cannot force the duty", "motor_top.vhd", "DbgForceDuty = '1'",
     "DbgForceDuty = 'X'", "duty"},
    {"debug core cannot force a fault", "motor_top.vhd", "DbgFault = '1'", "DbgFault = 'X'",
     "fault"},
};

const Mutation pulseWidthMutations[] = {
    {"pulses too wide", "pwm_core.sv", "carrier < active_duty", "carrier <= active_duty"},
    {"duty changes within a period", "pwm_core.sv", "if (last_clock)\n                active_duty",
     "active_duty"},
    {"short period", "pwm_core.sv", "carrier == TOP - 1'b1", "carrier == TOP - 2'd2"},
    {"always enabled", "pwm_core.sv", "enable && !dbg_gates_off", "!dbg_gates_off"},
    {"debug core cannot turn the gates off", "pwm_core.sv", "enable && !dbg_gates_off", "enable"},
    {"dead time not handed down", "pwm_core.sv", ".CLOCKS (DEAD_CLOCKS)", ".CLOCKS (2)"},
    {"all channels with the same duty", "pwm_core.sv", "n*DUTY_BITS +: DUTY_BITS",
     "0*n +: DUTY_BITS"},
    {"gates inverted", "pwm_core.sv", "gate_low[n]  = `GATE_LEVEL(low_on)",
     "gate_low[n]  = !`GATE_LEVEL(low_on)"},
    {"begin of a period shown late", "pwm_core.sv", "period_start <= last_clock",
     "period_start <= carrier == 0"},
};

/// The outputs that a test bench of the pulse-width modulator prints, one line for each clock.
QStringList clocks(const Run &result)
{
    return result.output.split('\n').filter(QRegularExpression("^clock "));
}

/// Applies a change to the text of a file. Fails the test function when the text to replace is
/// missing.
QByteArray replaceOnce(QByteArray text, const QByteArray &from, const QByteArray &to)
{
    if (text.count(from) != 1) {
        QTest::qFail("the text to change is not in the file exactly once: " + from, __FILE__,
                     __LINE__);
        return text;
    }
    return text.replace(from, to);
}

/// Arguments with which Verilator builds a simulation in the least time: the build takes much
/// longer than the run. One file with all sources reads the headers once.
QStringList unoptimisedBuild(const QString &folder, const QString &top)
{
    QStringList arguments{"--binary",   "--timing",     "-j",         "1",
                          "-Wno-fatal", "-Wno-lint",    "-Wno-style", "--Mdir",
                          folder,       "--top-module", top};
    for (const char *flag :
         {"OPT_FAST=-O0", "OPT_SLOW=-O0", "OPT_GLOBAL=-O0", "VM_PARALLEL_BUILDS=0"})
        arguments += QStringList{"-MAKEFLAGS", flag};
    return arguments;
}

QString fileOfName(const QStringList &files, const QString &name)
{
    for (const QString &file : files) {
        if (QFileInfo(file).fileName() == name)
            return file;
    }
    return QString();
}

} // namespace

/// Simulates the bundled examples with their self-checking test benches, unchanged and with
/// injected faults.
class TestSimulation : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void sensorHubPasses();
    void sensorHubTestBenchNoticesFaults_data();
    void sensorHubTestBenchNoticesFaults();
    void packetFilterPasses();
    void packetFilterTestBenchNoticesFaults();
    void motorDrivePasses_data();
    void motorDrivePasses();
    void motorDriveTestBenchNoticesFaults_data();
    void motorDriveTestBenchNoticesFaults();
    void pulseWidthModulatorAgreesWithItsModel_data();
    void pulseWidthModulatorAgreesWithItsModel();
    void pulseWidthTestBenchNoticesFaults_data();
    void pulseWidthTestBenchNoticesFaults();

private:
    Run simulateSensorHub(const QStringList &files);
    Run buildPacketFilter(const QStringList &files);
    void changeMotorDrive(TE::Project *project, const QString &file, const QByteArray &from,
                          const QByteArray &to);
    void forceInMotorDrive(TE::Project *project, const QString &what);
    Run simulateVhdl(const TE::Project &project, const QString &bench, const QStringList &generics);
    Run simulateModulator(const TE::Project &project, int deadClocks);
    Run simulateModulatorWithVerilator(const TE::Project &project, int deadClocks);
    QStringList commonArguments(const TE::Project &project) const;

    QTemporaryDir m_folder;
};

QStringList TestSimulation::commonArguments(const TE::Project &project) const
{
    QStringList arguments;
    for (const QString &path : project.options.value(TE::OPT::INCLUDEPATH).toStringList())
        arguments.append("-I" + QDir(project.workingDir).filePath(path));
    for (const QString &macro : project.macros)
        arguments.append("-D" + macro);
    return arguments;
}

Run TestSimulation::simulateSensorHub(const QStringList &files)
{
    const QStringList arguments = QStringList{"-g2001", "-o", "hub.vvp", "-s", "hub_tb"} +
                                  commonArguments(exampleProject("sensorhub")) + files +
                                  QStringList{examplePath("sensorhub", "tb/kx_primitives.v"),
                                              examplePath("sensorhub", "tb/hub_tb.v")};
    const Run compiled = run("iverilog", arguments, m_folder.path());
    return compiled.exitCode == 0 ? run("vvp", {"-n", "hub.vvp", "+stop_at_first"}, m_folder.path())
                                  : compiled;
}

Run TestSimulation::buildPacketFilter(const QStringList &files)
{
    const QStringList arguments = unoptimisedBuild("build", "pf_tb") +
                                  QStringList{"--timescale", "1ns/1ps"} +
                                  commonArguments(exampleProject("packetfilter")) + files +
                                  QStringList{examplePath("packetfilter", "tb/pf_tb.sv")};
    return run("verilator", arguments, m_folder.path());
}

/// Replaces a text in a file of the motor drive by changing a copy of the file.
void TestSimulation::changeMotorDrive(TE::Project *project, const QString &file,
                                      const QByteArray &from, const QByteArray &to)
{
    for (TE::ProjectSource &source : project->sources) {
        if (QFileInfo(source.path).fileName() != file)
            continue;
        const QByteArray changed = replaceOnce(readFile(source.path), from, to);
        source.path = m_folder.filePath(file);
        writeFile(source.path, changed);
        return;
    }
    QTest::qFail(qPrintable("no such file: " + file), __FILE__, __LINE__);
}

void TestSimulation::forceInMotorDrive(TE::Project *project, const QString &what)
{
    if (what == "duty") {
        changeMotorDrive(project, "motor_top.vhd", "DbgForceDuty : std_logic := '0'",
                         "DbgForceDuty : std_logic := '1'");
        changeMotorDrive(project, "motor_top.vhd", "(others => (others => '0'))",
                         "(others => \"010010\")");
    } else if (what == "fault") {
        changeMotorDrive(project, "motor_top.vhd", "DbgFault     : std_logic := '0'",
                         "DbgFault     : std_logic := '1'");
    }
}

/// Runs a test bench in VHDL with the VHDL half of the motor drive and the models in its folder.
Run TestSimulation::simulateVhdl(const TE::Project &project, const QString &bench,
                                 const QStringList &generics)
{
    const QTemporaryDir folder;
    QMap<QString, QStringList> libraries;
    for (const TE::ProjectSource &source : project.sources) {
        if (source.enabled && source.type == TE::VhdlFile)
            libraries[source.library].append(source.path);
    }
    libraries["work"] += {examplePath("motordrive", "tb/pwm_core_model.vhd"),
                          examplePath("motordrive", "tb/" + bench + ".vhd")};
    for (auto library = libraries.cbegin(); library != libraries.cend(); ++library) {
        const Run listed =
            run("ghdl", QStringList{"-i", "--std=08", "--work=" + library.key()} + library.value(),
                folder.path());
        if (listed.exitCode != 0)
            return listed;
    }
    const Run built = run("ghdl", {"-m", "--std=08", bench}, folder.path());
    if (built.exitCode != 0)
        return built;
    return run("ghdl",
               QStringList{"-r", "--std=08", bench, "--ieee-asserts=disable-at-0"} + generics,
               folder.path());
}

/// Runs the test bench of the SystemVerilog half with Icarus.
Run TestSimulation::simulateModulator(const TE::Project &project, int deadClocks)
{
    const QStringList arguments =
        QStringList{"-g2012", "-o",     "pwm.vvp",
                    "-s",     "pwm_tb", QString("-Ppwm_tb.DEAD_CLOCKS=%1").arg(deadClocks)} +
        commonArguments(project) + designFiles(project) +
        QStringList{examplePath("motordrive", "tb/dead_time_model.sv"),
                    examplePath("motordrive", "tb/pwm_tb.sv")};
    const Run compiled = run("iverilog", arguments, m_folder.path());
    const QString vectors = "+vectors=" + examplePath("motordrive", "tb/pwm_vectors.txt");
    return compiled.exitCode == 0 ? run("vvp", {"-n", "pwm.vvp", vectors}, m_folder.path())
                                  : compiled;
}

Run TestSimulation::simulateModulatorWithVerilator(const TE::Project &project, int deadClocks)
{
    const QStringList arguments = unoptimisedBuild("pwm", "pwm_tb") +
                                  QStringList{QString("-GDEAD_CLOCKS=%1").arg(deadClocks)} +
                                  commonArguments(project) + designFiles(project) +
                                  QStringList{examplePath("motordrive", "tb/dead_time_model.sv"),
                                              examplePath("motordrive", "tb/pwm_tb.sv")};
    const Run built = run("verilator", arguments, m_folder.path());
    const QString vectors = "+vectors=" + examplePath("motordrive", "tb/pwm_vectors.txt");
    return built.exitCode == 0 ? run(m_folder.filePath("pwm/Vpwm_tb"), {vectors}, m_folder.path())
                               : built;
}

void TestSimulation::sensorHubPasses()
{
    const Run result = simulateSensorHub(designFiles(exampleProject("sensorhub")));
    QVERIFY2(result.exitCode == 0 && verdict(result) == "PASS", qPrintable(result.output));
}

void TestSimulation::sensorHubTestBenchNoticesFaults_data()
{
    QTest::addColumn<int>("index");
    int index = 0;
    for (const Mutation &mutation : sensorHubMutations)
        QTest::newRow(mutation.name) << index++;
}

void TestSimulation::sensorHubTestBenchNoticesFaults()
{
    QFETCH(int, index);
    const Mutation &mutation = sensorHubMutations[index];
    QStringList files = designFiles(exampleProject("sensorhub"));
    const QString original = fileOfName(files, mutation.file);
    const QString changed = m_folder.filePath(mutation.file);
    writeFile(changed, replaceOnce(readFile(original), mutation.from, mutation.to));
    files.replaceInStrings(original, changed);

    const Run result = simulateSensorHub(files);
    QVERIFY2(result.exitCode == 0 && verdict(result) == "FAIL", qPrintable(result.output));
}

void TestSimulation::packetFilterPasses()
{
    const Run built = buildPacketFilter(designFiles(exampleProject("packetfilter")));
    QVERIFY2(built.exitCode == 0, qPrintable(built.output));
    const Run result = run(m_folder.filePath("build/Vpf_tb"), {}, m_folder.path());
    QVERIFY2(result.exitCode == 0 && verdict(result) == "PASS", qPrintable(result.output));
}

void TestSimulation::packetFilterTestBenchNoticesFaults()
{
    QStringList files = designFiles(exampleProject("packetfilter"));
    const int count = int(std::size(packetFilterMutations));
    for (int i = 0; i < count; ++i) {
        const Mutation &mutation = packetFilterMutations[i];
        const QString original = fileOfName(files, mutation.file);
        const QString changed = m_folder.filePath(mutation.file);
        const QByteArray choice = QByteArray("($test$plusargs(\"fault_") + char('a' + i) +
                                  "\") ? (" + mutation.to + ") : (" + mutation.from + "))";
        writeFile(changed, replaceOnce(readFile(original), mutation.from, choice));
        files.replaceInStrings(original, changed);
    }

    const Run built = buildPacketFilter(files);
    QVERIFY2(built.exitCode == 0, qPrintable(built.output));
    const QString program = m_folder.filePath("build/Vpf_tb");
    const Run sound = run(program, {}, m_folder.path());
    QVERIFY2(verdict(sound) == "PASS", qPrintable(sound.output));
    for (int i = 0; i < count; ++i) {
        const Run result =
            run(program, {QString("+fault_%1").arg(QChar('a' + i))}, m_folder.path());
        QVERIFY2(verdict(result) == "FAIL", packetFilterMutations[i].name);
    }
}

void TestSimulation::motorDrivePasses_data()
{
    QTest::addColumn<QString>("change");
    QTest::addColumn<QStringList>("generics");
    QTest::newRow("sine waves") << "" << QStringList();
    QTest::newRow("six steps") << "" << QStringList{"-gSIX_STEP=true"};
    QTest::newRow("other filter") << "filter" << QStringList();
    QTest::newRow("forced duty") << "duty" << QStringList{"-gDEBUG_DUTY=18"};
    QTest::newRow("forced fault") << "fault" << QStringList{"-gDEBUG_FAULT=true"};
}

void TestSimulation::motorDrivePasses()
{
    QFETCH(QString, change);
    QFETCH(QStringList, generics);
    TE::Project project = exampleProject("motordrive");
    forceInMotorDrive(&project, change);
    if (change == "filter") {
        for (TE::ProjectSource &source : project.sources) {
            if (QFileInfo(source.path).fileName().startsWith("lowpass"))
                source.enabled = !source.enabled;
        }
    }
    const Run result = simulateVhdl(project, "motor_tb", generics);
    QVERIFY2(result.exitCode == 0 && verdict(result) == "PASS", qPrintable(result.output));
}

void TestSimulation::motorDriveTestBenchNoticesFaults_data()
{
    QTest::addColumn<int>("index");
    int index = 0;
    for (const MotorMutation &mutation : motorDriveMutations)
        QTest::newRow(mutation.name) << index++;
}

void TestSimulation::motorDriveTestBenchNoticesFaults()
{
    QFETCH(int, index);
    const MotorMutation &mutation = motorDriveMutations[index];
    const QString forced = mutation.forced;
    TE::Project project = exampleProject("motordrive");
    forceInMotorDrive(&project, forced);
    changeMotorDrive(&project, mutation.file, mutation.from, mutation.to);

    QStringList generics;
    if (forced == "duty")
        generics = QStringList{"-gDEBUG_DUTY=18"};
    else if (forced == "fault")
        generics = QStringList{"-gDEBUG_FAULT=true"};
    const Run result = simulateVhdl(project, "motor_tb", generics);
    QVERIFY2(result.exitCode == 0 && verdict(result) == "FAIL", qPrintable(result.output));
}

void TestSimulation::pulseWidthModulatorAgreesWithItsModel_data()
{
    QTest::addColumn<int>("deadClocks");
    for (const int deadClocks : {0, 1, 3})
        QTest::newRow(qPrintable(QString("dead time of %1").arg(deadClocks))) << deadClocks;
}

/// The module with the model of dead_time, in two simulators, and the model of the module with
/// dead_time itself show the same outputs in every clock.
void TestSimulation::pulseWidthModulatorAgreesWithItsModel()
{
    QFETCH(int, deadClocks);
    const TE::Project project = exampleProject("motordrive");
    const Run module = simulateModulator(project, deadClocks);
    QVERIFY2(module.exitCode == 0 && verdict(module) == "PASS", qPrintable(module.output));
    QVERIFY(clocks(module).size() > 900);

    const Run model =
        simulateVhdl(project, "pwm_tb",
                     {QString("-gDEAD_CLOCKS=%1").arg(deadClocks),
                      "-gVECTORS=" + examplePath("motordrive", "tb/pwm_vectors.txt")});
    QVERIFY2(model.exitCode == 0, qPrintable(model.output));
    QCOMPARE(clocks(model), clocks(module));

    if (deadClocks == 3) { // The build takes much longer than all simulations.
        const Run verilator = simulateModulatorWithVerilator(project, deadClocks);
        QVERIFY2(verilator.exitCode == 0 && verdict(verilator) == "PASS",
                 qPrintable(verilator.output));
        QCOMPARE(clocks(verilator), clocks(module));
    }
}

void TestSimulation::pulseWidthTestBenchNoticesFaults_data()
{
    QTest::addColumn<int>("index");
    int index = 0;
    for (const Mutation &mutation : pulseWidthMutations)
        QTest::newRow(mutation.name) << index++;
}

/// By its own checks or by the comparison with the model.
void TestSimulation::pulseWidthTestBenchNoticesFaults()
{
    QFETCH(int, index);
    const Mutation &mutation = pulseWidthMutations[index];
    TE::Project project = exampleProject("motordrive");
    const Run sound = simulateModulator(project, 3);
    changeMotorDrive(&project, mutation.file, mutation.from, mutation.to);
    const Run result = simulateModulator(project, 3);
    QVERIFY2(result.exitCode == 0 && !verdict(result).isEmpty(), qPrintable(result.output));
    QVERIFY(verdict(result) == "FAIL" || clocks(result) != clocks(sound));
}

TARN_TEST_MAIN(TestSimulation)
#include "tst_simulation.moc"
