// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "exampleproject.h"

#include <support/files.h>
#include <support/testcase.h>
#include <te/teconstants.h>

#include <QApplication>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

using namespace TarnTest;

namespace {

constexpr int ToolTimeout = 300000;

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

struct Run
{
    int exitCode = -1;
    QString output;
};

Run run(const QString &program, const QStringList &arguments, const QString &folder)
{
    QProcess process;
    // Two of the builds differ only in the design.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!QStandardPaths::findExecutable("ccache").isEmpty())
        environment.insert("OBJCACHE", "ccache");
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    Run result;
    if (!process.waitForFinished(ToolTimeout)) {
        process.kill();
        process.waitForFinished();
        result.output = program + ": " + process.errorString();
        return result;
    }
    if (process.exitStatus() == QProcess::NormalExit)
        result.exitCode = process.exitCode();
    result.output = QString::fromUtf8(process.readAll());
    return result;
}

/// The last line that begins with PASS or FAIL, empty when there is none.
QString verdict(const Run &result)
{
    QString found;
    for (const QString &line : result.output.split('\n')) {
        if (line.startsWith("PASS") || line.startsWith("FAIL"))
            found = line.left(4);
    }
    return found;
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

private:
    Run simulateSensorHub(const QStringList &files);
    Run buildPacketFilter(const QStringList &files);
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
    // Unoptimised and in one unit: the build takes much longer than the simulation.
    const QStringList arguments = QStringList{"--binary",
                                              "--timing",
                                              "-j",
                                              "1",
                                              "--timescale",
                                              "1ns/1ps",
                                              "-Wno-fatal",
                                              "-Wno-lint",
                                              "-Wno-style",
                                              "--Mdir",
                                              "build",
                                              "--top-module",
                                              "pf_tb",
                                              "-MAKEFLAGS",
                                              "OPT_FAST=-O0",
                                              "-MAKEFLAGS",
                                              "OPT_SLOW=-O0",
                                              "-MAKEFLAGS",
                                              "OPT_GLOBAL=-O0"} +
                                  commonArguments(exampleProject("packetfilter")) + files +
                                  QStringList{examplePath("packetfilter", "tb/pf_tb.sv")};
    return run("verilator", arguments, m_folder.path());
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

TARN_TEST_MAIN(TestSimulation)
#include "tst_simulation.moc"
