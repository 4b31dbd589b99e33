// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "checkoutput.h"
#include "toolrun.h"

#include <audit/configtext.h>
#include <support/files.h>
#include <support/testcase.h>

#include <model/tarnconfig.h>
#include <tool/check/checkrules.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>

using TARN::ProbeOut;
using TARN::SignalItem;
using TARN::TarnCore;
using TarnTest::coresFrom;
using TarnTest::runTool;
using TarnTest::ToolRun;

namespace {

/// hub: clk, go, data[7:0], cnt_r, free (drivable), store (a memory as a whole is not readable).
constexpr char Hub[] = "module hub(input clk, input go, input [7:0] data, output reg cnt_r);\n"
                       "    wire free;\n"
                       "    always @(posedge clk) cnt_r <= go & free & data[0];\n"
                       "endmodule\n";

constexpr char Project[] = R"({
    "name": "hub", "version": 1, "top": "hub",
    "options": {"Synthesize_tool": "%1"},
    "sources": [{"file": "hub.v", "type": "Verilog", "enabled": true}]
})";

/// Configurations by the name of their files.
const QMap<QString, QStringList> Configs{
    {"clean.tarn", {"core hub/clk", "in: hub/go", "out 0x1: hub/free"}},
    {"error.tarn", {"core", "in: hub/go hub/cnt_q"}},
    {"warning.tarn", {"core", "in: hub/go hub/go"}},
    {"note.tarn", {"core", "in: hub/go", "in:"}},
    {"clock.tarn", {"core hub/clock", "in: hub/go"}},
    {"all.tarn", {"core none", "in: hub/cnt_q hub/go hub/go", "in:"}},
    {"cores.tarn",
     {"core", "out: hub/free", "core", "in: hub/go", "out: hub/free", "core", "in:", "in: hub/x"}},
};

const QString NoErrors;

/// The rules that end the lines, each once, sorted.
QStringList rulesIn(const QStringList &lines)
{
    QSet<QString> rules;
    const QRegularExpression end("\\[([a-z-]+)\\]$");
    for (const QString &line : lines) {
        const QRegularExpressionMatch match = end.match(line);
        if (match.hasMatch())
            rules.insert(match.captured(1));
    }
    QStringList list = rules.values();
    list.sort();
    return list;
}

/// Breaks every rule but that of an unusable clock in @p cores, which have a bus and a Probe Out
/// port of some nets.
void damage(QList<TarnCore *> *cores)
{
    TarnCore *core = cores->first();
    QList<SignalItem> &items = core->probeIns.first()->signals;
    const auto bus = std::find_if(items.begin(), items.end(),
                                  [](const SignalItem &item) { return !item.members.isEmpty(); });
    bus->name.replace(QRegularExpression("\\[(\\d+):"), "[1\\1:");
    SignalItem lost;
    lost.kind = SignalItem::Net;
    lost.name = core->userClock + "_lost";
    items += {lost, items.last(), items.last()};
    SignalItem driven = lost;
    driven.name = core->userClock;
    ProbeOut *out = core->probeOuts.last();
    out->signals += driven;
    out->initialValue = "0x1" + QString("0").repeated(65);
    core->addProbeOut(core->probeOuts.size());
    core->probeOuts.last()->signals = {core->probeOuts.first()->signals.first()};
    core->addProbeIn(core->probeIns.size());
    core->userClock += "_gone";
    core->syncUserClock = true;
    cores->append(new TarnCore(cores->size()));
}

} // namespace

class TestCheckCommand : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void runs_data();
    void runs();
    void summaryFollowsTheResults();
    void rulesNeedNoFile();
    void otherFilesAreCheckedWhenOneCannotBeRead();
    void nothingIsWrittenWithoutADesign();
    void outputFile();
    void otherSynthesisTool();
    void namesOfFiles_data();
    void namesOfFiles();
    void examples_data();
    void examples();

private:
    ToolRun run(const QStringList &arguments) const;

    QTemporaryDir m_folder;
};

void TestCheckCommand::initTestCase()
{
    TarnTest::writeFile(m_folder.filePath("hub.v"), Hub);
    TarnTest::writeFile(m_folder.filePath("hub.json"),
                        QString(Project).arg("OstraSynthesis").toUtf8());
    TarnTest::writeFile(m_folder.filePath("other/hub.v"), Hub);
    TarnTest::writeFile(m_folder.filePath("other/hub.json"),
                        QString(Project).arg("Synplify").toUtf8());
    TarnTest::writeFile(m_folder.filePath("broken.v"), "module hub(input clk; endmodule\n");
    TarnTest::writeFile(m_folder.filePath("broken.tarn"), "<TARN_CONFIG>\n");
    for (auto config = Configs.begin(); config != Configs.end(); ++config) {
        const Cores cores = coresFrom(config.value());
        QVERIFY(TARN::writeTARNConfigToXml(cores.list, m_folder.filePath(config.key())));
    }
    QVERIFY(QFile::copy(m_folder.filePath("clean.tarn"), m_folder.filePath("other/clean.tarn")));
}

ToolRun TestCheckCommand::run(const QStringList &arguments) const
{
    TarnTest::ToolSurroundings surroundings;
    surroundings.folder = m_folder.path();
    return runTool(QStringList("check") + arguments, surroundings);
}

void TestCheckCommand::runs_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QString>("errors");
    using Lines = QStringList;
    const auto add = [](const char *arguments, int exitCode, const Lines &lines,
                        const QString &errors) {
        QTest::newRow(arguments) << arguments << exitCode << lines << errors + '\n';
    };
    const QString missing =
        ":7: error: tarn_0, Probe In0: The design has no net hub/cnt_q. [net-missing]";
    const QString similar = "    hint: hub/cnt_r has a similar name";
    const QString note = ": note: tarn_0, Probe In1: The port holds no signal. [empty-port]";
    const QString twice = ": warning: tarn_0, Probe In0: The port holds hub/go twice. [repeated]";

    add("clean.tarn", 0, {}, "nothing found in 1 file");
    add("hub.json clean.tarn", 0, {}, "nothing found in 1 file");
    add("hub.v --top hub clean.tarn", 0, {}, "nothing found in 1 file");
    add("--strict clean.tarn", 0, {}, "nothing found in 1 file");
    add("error.tarn", 1, {"error.tarn" + missing, similar}, "1 error in 1 file");
    add("warning.tarn", 1, {"warning.tarn:6" + twice, "    also in line 7"}, "1 warning in 1 file");
    add("note.tarn", 0, {"note.tarn:8" + note}, "1 note in 1 file");
    add("--strict note.tarn", 1, {"note.tarn:8" + note}, "1 note in 1 file");
    add("--strict --ignore empty-port note.tarn", 0, {}, "nothing found in 1 file");
    add("--ignore empty-port warning.tarn note.tarn clean.tarn", 1,
        {"warning.tarn:6" + twice, "    also in line 7"}, "1 warning in 3 files");
    add("--ignore net-missing --ignore=repeated error.tarn warning.tarn", 0, {},
        "nothing found in 2 files");
    add("all.tarn --ignore clock-missing", 1,
        {"all.tarn:4: error: Tarn 0: No synchronization clock specified [save-check]",
         "all.tarn:6: error: tarn_0, Probe In0: The design has no net hub/cnt_q. [net-missing]",
         similar, "all.tarn:7" + twice, "    also in line 8", "all.tarn:10" + note},
        "2 errors, 1 warning, 1 note in 1 file");
    add("all.tarn --ignore save-check --ignore net-missing --ignore repeated", 1,
        {"all.tarn:4: error: tarn_0: No synchronization clock specified. [clock-missing]",
         "all.tarn:10" + note},
        "1 error, 1 note in 1 file");
    add("all.tarn --ignore save-check --ignore clock-missing --ignore net-missing "
        "--ignore repeated",
        0, {"all.tarn:10" + note}, "1 note in 1 file");
    add("clock.tarn", 1,
        {"clock.tarn:4: error: tarn_0: The design has no net hub/clock, the user clock. "
         "[clock-missing]",
         "    save check: Tarn 0: The output probe synchronizes with user clock does not exist "
         "[save-check]",
         "    hint: hub/clk has a similar name"},
        "1 error in 1 file");
    add("cores.tarn", 1,
        {"cores.tarn:18: note: tarn_2, Probe In0: The port holds no signal. [empty-port]",
         "cores.tarn:20: error: tarn_2, Probe In1: The design has no net hub/x. [net-missing]",
         "cores.tarn:6: error: tarn_0, Probe Out0: The net hub/free has several drivers: tarn_0, "
         "Probe Out0; tarn_1, Probe Out0. [several-drivers]",
         "    save check: ERROR:Signal \"hub/free\" has multiple drivers(tarn_0->Probe Out0, "
         "tarn_1->Probe Out0,) [save-check]",
         "    also in line 14"},
        "2 errors, 1 note in 1 file");
    // Named twice, reported once.
    add("note.tarn ./note.tarn", 0, {"note.tarn:8" + note}, "1 note in 1 file");
    add("note.tarn error.tarn", 1, {"note.tarn:8" + note, "error.tarn" + missing, similar},
        "1 error, 1 note in 2 files");

    const QString see = "\nSee tarn check --help.";
    add("--ignore net clean.tarn", 2, {},
        "tarn: there is no rule \"net\" to ignore; tarn check --rules lists the rules");
    add("--format xml clean.tarn", 2, {},
        "tarn: --format takes text or json or sarif, not \"xml\"" + see);
    add("--ignore", 2, {}, "tarn: --ignore needs a value: RULE" + see);
    add("", 2, {}, "tarn: no \".tarn\" file is given" + see);
    add("--rules --format sarif", 2, {}, "tarn: --rules has the formats text and json only");
    // The design is not looked for when there is nothing to check.
    add("gone.json gone.tarn broken.tarn", 2, {},
        "tarn: Can not read gone.tarn. No such file or directory\n"
        "tarn: Can not read broken.tarn. Line 2, column 1: Not well-formed XML: Premature end of "
        "document. Correct it, or take an earlier copy of the file.\n"
        "2 files cannot be read");
}

void TestCheckCommand::runs()
{
    QFETCH(QString, arguments);
    QFETCH(int, exitCode);
    QFETCH(QStringList, lines);
    QFETCH(QString, errors);
    const QStringList words = arguments.split(' ', Qt::SkipEmptyParts);
    const ToolRun text = run(words);
    QCOMPARE(text.errors, errors);
    QCOMPARE(QString::fromUtf8(text.output).split('\n', Qt::SkipEmptyParts), lines);
    QCOMPARE(text.exitCode, exitCode);
    if (exitCode == 2)
        return;
    // The other forms say the same.
    for (const QString format : {"json", "sarif"}) {
        const ToolRun other = run(words + QStringList{"--format", format});
        QCOMPARE(other.errors, errors);
        QCOMPARE(other.exitCode, exitCode);
        QCOMPARE(TarnTest::textOf(format, other.output), lines);
    }
}

void TestCheckCommand::summaryFollowsTheResults()
{
    TarnTest::ToolSurroundings surroundings;
    surroundings.folder = m_folder.path();
    surroundings.redirection = "2>&1";
    const ToolRun both = runTool({"check", "note.tarn"}, surroundings);
    QCOMPARE(QString::fromUtf8(both.output),
             QString("note.tarn:8: note: tarn_0, Probe In1: The port holds no signal. "
                     "[empty-port]\n1 note in 1 file\n"));
}

void TestCheckCommand::rulesNeedNoFile()
{
    const ToolRun text = run({"--rules"});
    QCOMPARE(text.exitCode, 0);
    QCOMPARE(text.errors, NoErrors);
    const QStringList lines = QString::fromUtf8(text.output).split('\n', Qt::SkipEmptyParts);
    const ToolRun json = run({"--rules", "--format", "json"});
    QCOMPARE(json.exitCode, 0);
    const QJsonArray list = QJsonDocument::fromJson(json.output).array();
    QCOMPARE(lines.size(), Tool::checkRules().size());
    QCOMPARE(list.size(), Tool::checkRules().size());
    for (int i = 0; i < lines.size(); ++i) {
        const Tool::CheckRule &rule = Tool::checkRules().at(i);
        const QString level = Tool::levelName(rule.severity);
        QCOMPARE(lines.at(i).simplified(), rule.id + ' ' + level + ' ' + rule.meaning);
        QCOMPARE(list[i].toObject(), QJsonObject({{"id", rule.id},
                                                  {"level", level},
                                                  {"meaning", rule.meaning},
                                                  {"cause", rule.cause},
                                                  {"advice", rule.advice}}));
    }
}

void TestCheckCommand::otherFilesAreCheckedWhenOneCannotBeRead()
{
    const QStringList files{"broken.tarn", "error.tarn", "gone.tarn", "note.tarn"};
    const QString errors = "tarn: Can not read broken.tarn. Line 2, column 1: Not well-formed XML: "
                           "Premature end of document. Correct it, or take an earlier copy of the "
                           "file.\n"
                           "tarn: Can not read gone.tarn. No such file or directory\n"
                           "1 error, 1 note in 2 files; 2 files cannot be read\n";
    const ToolRun text = run(files);
    QCOMPARE(text.exitCode, 2);
    QCOMPARE(text.errors, errors);
    const QStringList lines = QString::fromUtf8(text.output).split('\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 3);
    for (const QString format : {"json", "sarif"}) {
        const ToolRun other = run(files + QStringList{"--format", format});
        QCOMPARE(other.exitCode, 2);
        QCOMPARE(other.errors, errors);
        QCOMPARE(TarnTest::textOf(format, other.output), lines);
        const QJsonDocument document = QJsonDocument::fromJson(other.output);
        const QString reason = errors.section('\n', 0, 0).mid(6);
        if (format == "json") {
            QCOMPARE(document["files"][0]["error"].toString(), reason);
            QVERIFY(document["files"][0]["results"].isUndefined());
            QVERIFY(document["files"][1]["error"].isUndefined());
        } else {
            const QJsonValue invocation = document["runs"][0]["invocations"][0];
            QCOMPARE(invocation["executionSuccessful"].toBool(true), false);
            QCOMPARE(invocation["toolExecutionNotifications"].toArray().size(), 2);
            QCOMPARE(invocation["toolExecutionNotifications"][0]["message"]["text"].toString(),
                     reason);
        }
    }
}

void TestCheckCommand::nothingIsWrittenWithoutADesign()
{
    for (const QString format : {"text", "json", "sarif"}) {
        const ToolRun broken =
            run({"--format", format, "broken.v", "error.tarn", "-o", "broken.out"});
        QCOMPARE(broken.exitCode, 2);
        QCOMPARE(broken.output, QByteArray());
        QVERIFY2(broken.errors.startsWith("tarn: "), qPrintable(broken.errors));
        QVERIFY2(broken.errors.contains("broken.v"), qPrintable(broken.errors));
        QVERIFY(!QFile::exists(m_folder.filePath("broken.out")));
    }
    const ToolRun gone = run({"gone.json", "error.tarn"});
    QCOMPARE(gone.exitCode, 2);
    QVERIFY2(gone.errors.contains("gone.json"), qPrintable(gone.errors));
}

/// The results are in the file also when a configuration could not be read.
void TestCheckCommand::outputFile()
{
    const QStringList files{"error.tarn", "note.tarn"};
    const ToolRun plain = run(files);
    const ToolRun found = run(files + QStringList{"-o", "found.txt"});
    QCOMPARE(found.exitCode, 1);
    QCOMPARE(found.output, QByteArray());
    QCOMPARE(found.errors, plain.errors);
    QCOMPARE(TarnTest::readFile(m_folder.filePath("found.txt")), plain.output);

    const ToolRun refused = run(files + QStringList{"gone.tarn", "-o", "refused.txt"});
    QCOMPARE(refused.exitCode, 2);
    QCOMPARE(TarnTest::readFile(m_folder.filePath("refused.txt")), plain.output);
    const ToolRun input = run(files + QStringList{"-o", "note.tarn"});
    QCOMPARE(input.exitCode, 2);
    QVERIFY(TarnTest::readFile(m_folder.filePath("note.tarn")).startsWith("<?xml"));
}

void TestCheckCommand::otherSynthesisTool()
{
    const ToolRun found = run({"other/clean.tarn"});
    QCOMPARE(found.exitCode, 1);
    QCOMPARE(QString::fromUtf8(found.output),
             QString("other/clean.tarn:1: error: For RTL Design, TARN is only available for "
                     "OstraSynthesis. Please change Synthesis Tool to OstraSynthesis in "
                     "Configurations. [save-check]\n"));
    const ToolRun ignored = run({"other/clean.tarn", "--ignore", "save-check"});
    QCOMPARE(ignored.exitCode, 0);
    QCOMPARE(ignored.output, QByteArray());
}

void TestCheckCommand::namesOfFiles_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("shown");
    QTest::addColumn<QString>("uri");
    const auto add = [](const QByteArray &name, const QByteArray &shown, const QString &uri) {
        QTest::newRow(shown) << name << shown << uri;
    };
    add("a b%20.tarn", "a b%20.tarn", "a%20b%2520.tarn");
    add("\xc3\xa4.tarn", "\xc3\xa4.tarn", "%C3%A4.tarn");
    add("\xe4.tarn", "\xe4.tarn", "%E4.tarn");
    add("two\nlines.tarn", "two\\x0alines.tarn", "two%0Alines.tarn");
    add("-o.tarn", "./-o.tarn", "-o.tarn");
}

void TestCheckCommand::namesOfFiles()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, shown);
    QFETCH(QString, uri);
    const QByteArray path = QFile::encodeName(m_folder.path()) + '/' + name;
    QFile source(m_folder.filePath("note.tarn"));
    QVERIFY(source.open(QIODevice::ReadOnly));
    std::FILE *target = std::fopen(path.constData(), "wb");
    QVERIFY(target);
    const QByteArray content = source.readAll();
    std::fwrite(content.constData(), 1, size_t(content.size()), target);
    std::fclose(target);

    // The shell gives the bytes to the tool as they are.
    const auto check = [&](const QByteArray &format) {
        QProcess process;
        process.setWorkingDirectory(m_folder.path());
        process.setProcessEnvironment([] {
            QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
            environment.insert("LC_ALL", "C");
            return environment;
        }());
        TarnTest::writeFile(m_folder.filePath("run.sh"), "exec '" TARN_TOOL "' check --format " +
                                                             format + " './" + name + "'\n");
        process.start("/bin/sh", {"run.sh"});
        process.waitForFinished(60000);
        return process.readAllStandardOutput();
    };
    const QByteArray place =
        ":8: note: tarn_0, Probe In1: The port holds no signal. [empty-port]\n";
    QCOMPARE(check("text"), (shown.startsWith("./") ? shown : "./" + shown) + place);
    const QJsonDocument sarif = QJsonDocument::fromJson(check("sarif"));
    QCOMPARE(sarif["runs"][0]["artifacts"][0]["location"]["uri"].toString(), uri);
    QVERIFY(QJsonDocument::fromJson(check("json")).isObject());
    QCOMPARE(std::remove(path.constData()), 0); // QTemporaryDir cannot name all of them.
}

void TestCheckCommand::examples_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"motordrive", "packetfilter", "sensorhub"})
        QTest::newRow(name) << name;
}

/// Damages the configuration of an example in every way that a rule is for.
void TestCheckCommand::examples()
{
    QFETCH(QString, name);
    const QString folder = QStringLiteral(TARN_EXAMPLES_DIR) + '/' + name + '/';
    TarnTest::ToolSurroundings surroundings;
    surroundings.folder = folder;
    const ToolRun clean = runTool({"check", "--strict", name + ".tarn"}, surroundings);
    QCOMPARE(clean.errors, QString("nothing found in 1 file\n"));
    QCOMPARE(clean.exitCode, 0);

    Cores cores(TARN::readTARNConfigFromXml(folder + name + ".tarn", nullptr, nullptr));
    damage(&cores.list);
    const QString path = m_folder.filePath(name + ".tarn");
    QVERIFY(TARN::writeTARNConfigToXml(cores.list, path));
    const QStringList arguments{"check", folder + name + ".json", path};
    const ToolRun text = runTool(arguments);
    QCOMPARE(text.exitCode, 1);
    const QStringList lines = QString::fromUtf8(text.output).split('\n', Qt::SkipEmptyParts);
    QStringList expected;
    for (const Tool::CheckRule &rule : Tool::checkRules())
        expected += rule.id;
    expected.removeOne("clock-not-usable");
    expected.sort();
    QCOMPARE(rulesIn(lines), expected);
    for (const QString format : {"json", "sarif"}) {
        const ToolRun other = runTool(arguments + QStringList{"--format", format});
        QCOMPARE(other.exitCode, 1);
        QCOMPARE(TarnTest::textOf(format, other.output), lines);
    }
}

TARN_TEST_MAIN(TestCheckCommand)
#include "tst_checkcommand.moc"
