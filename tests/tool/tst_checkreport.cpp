// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "checkoutput.h"

#include <audit/configtext.h>
#include <audit/randomdesign.h>
#include <support/files.h>
#include <support/setting.h>
#include <support/testcase.h>

#include <audit/findingtext.h>
#include <model/tarnconfig.h>
#include <netweir/hierachy.h>
#include <netweir/netlistbuilder.h>
#include <tool/check/checkreport.h>
#include <tool/check/checkrules.h>

#include <QApplication>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

using TARN::Rule;
using TARN::Severity;
using TarnTest::coresFrom;

namespace {

/// top: clk, a, b, cnt_r, mem (not readable), rst (not drivable), data[7:0], mix[1:0] (0 not
/// drivable); top/u1: x, y, z.
std::unique_ptr<NETWEIR::RtlNetlist> design()
{
    const NETWEIR::NetMarks notIn{true, false};
    const NETWEIR::NetMarks notOut{false, true};
    NETWEIR::NetlistBuilder builder("top");
    for (const char *name : {"clk", "a", "b", "cnt_r"})
        builder.addNet(builder.top(), name);
    builder.addNet(builder.top(), "mem", notIn);
    builder.addNet(builder.top(), "rst", notOut);
    builder.addBus(builder.top(), "data", 7, 0);
    builder.addBus(builder.top(), "mix", 1, 0, {{}, notOut});
    NETWEIR::Hierachy *u1 = builder.addHierachy(builder.top(), "u_filter_new", "filter");
    for (const char *name : {"sum", "carry", "state"})
        builder.addNet(u1, name);
    return builder.take();
}

QSet<int> rulesOf(const QStringList &ids)
{
    QSet<int> rules;
    for (const QString &id : ids)
        rules.insert(Tool::ruleWithId(id));
    return rules;
}

/// A configuration as it was read from its file, and a design to check it against.
struct CheckedConfig
{
    Cores cores;
    TARN::ConfigLines lines;
};

/// Level, rule and place of a result, and whether the save check says the same:
/// "error clock-missing tarn_0 +save".
QString briefOf(const Tool::CheckResult &result)
{
    const QString text = Tool::levelName(result.level) + ' ' +
                         Tool::checkRules().at(result.rule).id + ' ' + result.place.text;
    return result.saveMessage.isEmpty() ? text : text + " +save";
}

/// The report of one file.
QByteArray outputOf(const QString &format, const QString &path, const Tool::FileCheck &check,
                    const TARN::CandidateSearch &search)
{
    QByteArray output;
    const auto report =
        Tool::newReport(format, [&output](const QByteArray &text) { output += text; });
    report->begin();
    report->beginFile(path);
    for (int i = 0; i < check.count(); ++i)
        report->addResult(check.at(i, search));
    report->endFile();
    report->end(check.counts());
    return output;
}

} // namespace

class TestCheckReport : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void text_data();
    void text();
    void json();
    void formsWithoutFilesAndResults();
    void sarif();
    void sarifOfPlacesOnOneLine();
    void sarifAddresses_data();
    void sarifAddresses();
    void ignoring_data();
    void ignoring();
    void randomResultsAreThoseOfAuditAndSaveCheck();
    void rulesAreThoseOfTheFindings();
    void pageDescribesTheRules();
    void manyMissingNames();
    void everySarifLogFitsTheSchema(); // The last, because the others make the logs.

private:
    CheckedConfig config(const Cores &cores);
    CheckedConfig configFrom(const QString &path);
    QByteArray report(const QString &format, const QStringList &config,
                      const QStringList &ignored = {}, const QString &refusal = {},
                      const QString &path = "hub.tarn");
    void keepLog(const QByteArray &sarif);

    QTemporaryDir m_folder;
    QTemporaryDir m_logs; ///< The SARIF logs that the tests made.
    int m_logCount = 0;
    const std::unique_ptr<NETWEIR::RtlNetlist> m_netlist = design();
    const TARN::DesignNames m_names{m_netlist.get()};
};

/// Writes the cores to a file and reads them again, so that they have lines.
CheckedConfig TestCheckReport::config(const Cores &cores)
{
    const QString path = m_folder.filePath("a.tarn");
    if (!TARN::writeTARNConfigToXml(cores.list, path))
        qFatal("The configuration cannot be written.");
    return configFrom(path);
}

CheckedConfig TestCheckReport::configFrom(const QString &path)
{
    bool ok = false;
    QString error;
    TARN::ConfigLines lines;
    Cores back(TARN::readTARNConfigFromXml(path, &ok, &error, &lines));
    if (!ok)
        qFatal("%s", qPrintable(error));
    return {std::move(back), lines};
}

QByteArray TestCheckReport::report(const QString &format, const QStringList &lines,
                                   const QStringList &ignored, const QString &refusal,
                                   const QString &path)
{
    const CheckedConfig checked = config(coresFrom(lines));
    const Tool::FileCheck check(checked.cores.list, checked.lines, m_names, refusal,
                                rulesOf(ignored));
    TARN::CandidateSearch search(m_names);
    search.setMissing(check.missing());
    while (!search.step(std::chrono::milliseconds(10))) {
    }
    const QByteArray output = outputOf(format, path, check, search);
    if (format == "sarif")
        keepLog(output);
    return output;
}

void TestCheckReport::keepLog(const QByteArray &sarif)
{
    TarnTest::writeFile(m_logs.filePath(QString("%1.sarif").arg(m_logCount++)), sarif);
}

void TestCheckReport::everySarifLogFitsTheSchema()
{
    QVERIFY(m_logCount > 20);
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(TARN_PYTHON, {TARN_SARIF_CHECK, m_logs.path()});
    QVERIFY(process.waitForFinished(60000));
    const QByteArray output = process.readAll();
    QVERIFY2(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0,
             output.constData());
    QCOMPARE(output, QByteArray::number(m_logCount) + " logs are valid\n");
}

void TestCheckReport::text_data()
{
    QTest::addColumn<QStringList>("config");
    QTest::addColumn<QStringList>("lines");
    using Lines = QStringList;
    const auto add = [](const char *name, const Lines &config, const Lines &lines) {
        QTest::newRow(name) << config << lines;
    };
    add("no core", {}, {});
    add("all is well", {"core top/clk", "in: top/a top/data[7:0]=7,6,5,4,3,2,1,0"}, {});
    add("net missing", {"core", "in: top/cnt_q"},
        {"6: error: tarn_0, Probe In0: The design has no net top/cnt_q. [net-missing]",
         "    hint: top/cnt_r has a similar name"});
    add("nothing is alike", {"core", "in: top/Xyzzy9"},
        {"6: error: tarn_0, Probe In0: The design has no net top/Xyzzy9. [net-missing]"});
    add("an instance moved",
        {"core", "in: top/u_filter_old/sum top/u_filter_old/carry top/u_filter_old/state"},
        {"6: error: tarn_0, Probe In0: The design has no net top/u_filter_old/sum. [net-missing]",
         "    hint: top/u_filter_old may be top/u_filter_new now, which finds 3 names",
         "7: error: tarn_0, Probe In0: The design has no net top/u_filter_old/carry. [net-missing]",
         "    hint: top/u_filter_old may be top/u_filter_new now, which finds 3 names",
         "8: error: tarn_0, Probe In0: The design has no net top/u_filter_old/state. [net-missing]",
         "    hint: top/u_filter_old may be top/u_filter_new now, which finds 3 names"});
    add("bus changed", {"core", "in: top/data[8:0]=8,7"},
        {"6: warning: tarn_0, Probe In0: The bus top/data[8:0] is top/data[7:0] in the design now: "
         "1 bit fewer. [bus-changed]"});
    add("bit not usable", {"core", "out: top/mix[1:0]=1,0"},
        {"8: warning: tarn_0, Probe Out0: The bit top/mix[0] cannot be driven: the design drives "
         "it, or it is no wire. [not-usable]"});
    add("clock not given", {"core none", "in: top/a"},
        {"4: error: tarn_0: No synchronization clock specified. [clock-missing]",
         "    save check: Tarn 0: No synchronization clock specified [save-check]"});
    add("clock missing", {"core", "in: top/a", "core top/clkk", "in: top/a"},
        {"9: error: tarn_1: The design has no net top/clkk, the user clock. [clock-missing]",
         "    save check: Tarn 1: The output probe synchronizes with user clock does not exist "
         "[save-check]",
         "    hint: top/clk has a similar name"});
    add("clock not usable", {"core top/mem", "in: top/a"},
        {"4: error: tarn_0: The net top/mem cannot be the user clock: it has no value in the "
         "hardware. [clock-not-usable]",
         "    save check: Tarn 0: Invalid user clock selected for output probe synchronization "
         "[save-check]"});
    add("several drivers", {"core", "out: top/a", "out: top/b", "core", "out: top/a top/b"},
        {"6: error: tarn_0, Probe Out0: The net top/a has several drivers: tarn_0, Probe Out0; "
         "tarn_1, Probe Out0. [several-drivers]",
         "    save check: ERROR:Signal \"top/a\" has multiple drivers(tarn_0->Probe Out0, "
         "tarn_1->Probe Out0,) [save-check]",
         "    also in line 14",
         "9: error: tarn_0, Probe Out1: The net top/b has several drivers: tarn_0, Probe Out1; "
         "tarn_1, Probe Out0. [several-drivers]",
         "    save check: ERROR:Signal \"top/b\" has multiple drivers(tarn_0->Probe Out1, "
         "tarn_1->Probe Out0,) [save-check]",
         "    also in line 15"});
    add("repeated", {"core", "in: top/data[3] top/data[7:0]=4,3"},
        {"6: warning: tarn_0, Probe In0: The port holds top/data[3] twice. [repeated]",
         "    also in line 9"});
    add("repeated very often", {"core", "in:" + QString(" top/a").repeated(12)},
        {"6: warning: tarn_0, Probe In0: The port holds top/a 12 times. [repeated]",
         "    also in line 7, 8, 9, 10, 11, 12, 13, 14, and 3 more"});
    add("value too wide", {"core", "out: top/b", "out 0xFF: top/a"},
        {"8: warning: tarn_0, Probe Out1: The initial value 0xFF does not fit: its width is 8, "
         "that of the port is 1. [value-width]"});
    add("empty core", {"core", "in: top/a", "core"},
        {"9: error: tarn_1: The core has no port that holds a signal. [empty-core]",
         "    save check: Tarn 1: At least one Probe In port or Probe Out port should be enabled "
         "[save-check]"});
    add("empty port", {"core", "in: top/a", "in:"},
        {"8: note: tarn_0, Probe In1: The port holds no signal. [empty-port]"});
    add("control characters in a name", {"core", "in: top/x\n\u009b:1:"},
        {"6: error: tarn_0, Probe In0: The design has no net top/x\\x0a\\x9b:1:. [net-missing]"});
}

void TestCheckReport::text()
{
    QFETCH(QStringList, config);
    QFETCH(QStringList, lines);
    QStringList expected;
    for (const QString &line : qAsConst(lines))
        expected += line.startsWith(' ') ? line : "hub.tarn:" + line;
    const QString found = QString::fromUtf8(report("text", config));
    QCOMPARE(found.split('\n', Qt::SkipEmptyParts), expected);
    QVERIFY(found.isEmpty() || found.endsWith('\n'));
    // The other forms say the same.
    for (const QString format : {"json", "sarif"}) {
        QStringList other = TarnTest::textOf(format, report(format, config));
        other.replaceInStrings("\n", "\\x0a");
        other.replaceInStrings("\u009b", "\\x9b");
        QCOMPARE(other, expected);
    }
}

void TestCheckReport::json()
{
    const QByteArray text =
        report("json", {"core", "in: top/u_filter_old/sum", "out: top/a", "out: top/a",
                        "in: top/u_filter_old/carry", "in: top/u_filter_old/state"});
    const auto missing = [](const QString &port, const QString &line, const QString &name) {
        return QString(R"x(                {"rule":"net-missing","level":"error",)x"
                       R"x("message":"The design has no net top/u_filter_old/%3.",)x"
                       R"x("place":"tarn_0, Probe In%1","core":0,"port":"in%1","line":%2,)x"
                       R"x("name":"top/u_filter_old/%3","candidates":[{"step":"replace-prefix",)x"
                       R"x("from":"top/u_filter_old","to":"top/u_filter_new","finds":3},)x"
                       R"x({"step":"replace","from":"top/u_filter_old/%3",)x"
                       R"x("to":"top/u_filter_new/%3"}]},)x")
            .arg(port, line, name);
    };
    const QStringList expected{
        "{",
        R"x(    "version": 1,)x",
        R"x(    "files": [)x",
        R"x(        {)x",
        R"x(            "file": "hub.tarn",)x",
        R"x(            "results": [)x",
        missing("0", "6", "sum"),
        missing("1", "9", "carry"),
        missing("2", "12", "state"),
        R"x(                {"rule":"several-drivers","level":"error","message":"The net top/a )x"
        R"x(has several drivers: tarn_0, Probe Out0; tarn_0, Probe Out1.",)x"
        R"x("place":"tarn_0, Probe Out0","core":0,"port":"out0","line":15,"name":"top/a",)x"
        R"x("others":[{"place":"tarn_0, Probe Out1","core":0,"port":"out1","line":18}],)x"
        R"x("saveCheck":"ERROR:Signal \"top/a\" has multiple drivers(tarn_0->Probe Out0, )x"
        R"x(tarn_0->Probe Out1,)"})x",
        "            ]",
        "        }",
        "    ],",
        R"x(    "errors": 4,)x",
        R"x(    "warnings": 0,)x",
        R"x(    "notes": 0)x",
        "}",
        ""};
    QCOMPARE(QString::fromUtf8(text).split('\n'), expected);
}

void TestCheckReport::formsWithoutFilesAndResults()
{
    for (const QString format : {"text", "json", "sarif"}) {
        QByteArray output;
        const auto report =
            Tool::newReport(format, [&output](const QByteArray &text) { output += text; });
        report->begin();
        report->refuseFile("gone.tarn", "Can not read gone.tarn.");
        report->end({});
        if (format == "text") {
            QCOMPARE(output, QByteArray());
            continue;
        }
        const QJsonDocument document = QJsonDocument::fromJson(output);
        if (format == "json") {
            QCOMPARE(document["files"][0].toObject(),
                     QJsonObject({{"file", "gone.tarn"}, {"error", "Can not read gone.tarn."}}));
            continue;
        }
        keepLog(output);
        const QJsonObject run = document["runs"][0].toObject();
        QCOMPARE(run["results"].toArray().size(), 0);
        const QJsonObject invocation = run["invocations"].toArray().first().toObject();
        QCOMPARE(invocation["executionSuccessful"].toBool(true), false);
        QCOMPARE(invocation["toolExecutionNotifications"][0]["message"]["text"].toString(),
                 QString("Can not read gone.tarn."));
    }
}

void TestCheckReport::sarif()
{
    const QByteArray text =
        report("sarif", {"core", "out: top/a top/{0}", "core top/clk", "out: top/a"}, {}, "No {}!");
    const QJsonObject run = QJsonDocument::fromJson(text)["runs"][0].toObject();
    const QJsonArray rules = run["tool"]["driver"]["rules"].toArray();
    QCOMPARE(rules.size(), Tool::checkRules().size());
    QCOMPARE(rules[0]["id"].toString(), QString("net-missing"));
    QCOMPARE(rules[0]["defaultConfiguration"]["level"].toString(), QString("error"));
    for (const char *key : {"shortDescription", "fullDescription", "help"})
        QVERIFY(!rules[0][key]["text"].toString().isEmpty());

    const QJsonArray results = run["results"].toArray();
    QCOMPARE(results.size(), 3);
    // The whole file: nothing can be saved.
    QCOMPARE(results[0]["ruleId"].toString(), QString("save-check"));
    QCOMPARE(results[0]["message"]["text"].toString(), QString("No {{}}!"));
    QCOMPARE(results[0]["locations"][0]["physicalLocation"]["region"]["startLine"].toInt(), 1);
    QVERIFY(results[0]["locations"][0]["logicalLocations"].isUndefined());
    // A name with braces.
    QCOMPARE(results[1]["message"]["text"].toString(),
             QString("tarn_0, Probe Out0: The design has no net top/{{0}}."));
    QCOMPARE(results[1]["properties"]["name"].toString(), QString("top/{0}"));
    QCOMPARE(
        results[1]["locations"][0]["logicalLocations"][0].toObject(),
        QJsonObject({{"name", "out0"}, {"fullyQualifiedName", "tarn_0.out0"}, {"kind", "member"}}));
    // Several places, and the save check.
    QCOMPARE(results[2]["locations"][0]["physicalLocation"]["region"]["startLine"].toInt(), 6);
    const QJsonValue related = results[2]["relatedLocations"][0];
    QCOMPARE(related["physicalLocation"]["region"]["startLine"].toInt(), 12);
    QCOMPARE(related["message"]["text"].toString(), QString("tarn_1, Probe Out0"));
    QVERIFY(results[2]["properties"]["saveCheck"].toString().startsWith("ERROR:Signal \"top/a\""));
}

/// Related locations must differ, also where other programs write everything on one line.
void TestCheckReport::sarifOfPlacesOnOneLine()
{
    const QString path = m_folder.filePath("line.tarn");
    TarnTest::writeFile(path, "<TARN_CONFIG><Version>1.0</Version><Core index='0'><ProbeIn "
                              "index='0'><Signal name='top/a'/><Signal name='top/a'/><Signal "
                              "name='top/a'/></ProbeIn></Core></TARN_CONFIG>");
    const CheckedConfig checked = configFrom(path);
    const Tool::FileCheck check(checked.cores.list, checked.lines, m_names, {}, {});
    const TARN::CandidateSearch search(m_names);
    QCOMPARE(outputOf("text", "hub.tarn", check, search),
             QByteArray("hub.tarn:1: warning: tarn_0, Probe In0: The port holds top/a 3 times. "
                        "[repeated]\n"));
    const QByteArray sarif = outputOf("sarif", "hub.tarn", check, search);
    QCOMPARE(QJsonDocument::fromJson(sarif)["runs"][0]["results"][0]["relatedLocations"]
                 .toArray()
                 .size(),
             2);
    keepLog(sarif);
}

void TestCheckReport::sarifAddresses_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("uri");
    QTest::addColumn<bool>("relative");
    const QString here = QDir::currentPath();
    const auto add = [](const char *name, const QString &path, const QString &uri, bool relative) {
        QTest::newRow(name) << path << uri << relative;
    };
    add("relative", "hub.tarn", "hub.tarn", true);
    add("cleaned", "./a/../b//hub.tarn", "b/hub.tarn", true);
    add("absolute, below", here + "/a/hub.tarn", "a/hub.tarn", true);
    const QString encoded = QString::fromLatin1(QUrl::toPercentEncoding(here, "/"));
    add("beside, with the same beginning", here + "2/hub.tarn", "file://" + encoded + "2/hub.tarn",
        false);
    add("above", "../../../../../../../../../../../hub.tarn", "file:///hub.tarn", false);
    add("characters", "50% a:b#c?d[1] \u00e4.tarn", "50%25%20a%3Ab%23c%3Fd%5B1%5D%20%C3%A4.tarn",
        true);
}

void TestCheckReport::sarifAddresses()
{
    QFETCH(QString, path);
    QFETCH(QString, uri);
    QFETCH(bool, relative);
    const QByteArray text = report("sarif", {"core"}, {}, {}, path);
    const QJsonObject run = QJsonDocument::fromJson(text)["runs"][0].toObject();
    QJsonObject expected{{"uri", uri}};
    if (relative)
        expected["uriBaseId"] = "%SRCROOT%";
    QCOMPARE(run["artifacts"][0]["location"].toObject(), expected);
    expected["index"] = 0;
    QCOMPARE(run["results"][0]["locations"][0]["physicalLocation"]["artifactLocation"].toObject(),
             expected);
    const QString base = run["originalUriBaseIds"]["%SRCROOT%"]["uri"].toString();
    QCOMPARE(QUrl(base).toLocalFile(), QDir::currentPath() + '/');
}

void TestCheckReport::ignoring_data()
{
    QTest::addColumn<QStringList>("config");
    QTest::addColumn<QStringList>("ignored");
    QTest::addColumn<QStringList>("results");
    using Lines = QStringList;
    const auto add = [](const char *name, const Lines &config, const Lines &ignored,
                        const Lines &results) {
        QTest::newRow(name) << config << ignored << results;
    };
    const Lines all{"core none", "in: top/gone top/a top/a", "in:", "out: top/b", "out: top/b",
                    "core"};
    const QString drivers = "error several-drivers tarn_0, Probe Out0";
    const QString clock = "error clock-missing tarn_0";
    const QString core = "error empty-core tarn_1";
    const Lines port{"error net-missing tarn_0, Probe In0", "warning repeated tarn_0, Probe In0",
                     "note empty-port tarn_0, Probe In1"};
    add("nothing", all, {},
        Lines(clock + " +save") + port + Lines{core + " +save", drivers + " +save"});
    add("findings without an error of the save check", all,
        {"net-missing", "repeated", "empty-port"},
        {clock + " +save", core + " +save", drivers + " +save"});
    add("the save check", all, {"save-check"},
        Lines(clock) + port + Lines{"note empty-core tarn_1", drivers});
    add("findings with an error of the save check", all,
        {"clock-missing", "several-drivers", "empty-core"},
        Lines("error save-check tarn_0") + port +
            Lines{"error save-check tarn_1", "error save-check tarn_0, Probe Out0"});
    add("both", all, {"save-check", "several-drivers", "clock-missing", "empty-core"}, port);
    Lines everything;
    for (const Tool::CheckRule &rule : Tool::checkRules())
        everything += rule.id;
    add("everything", all, everything, {});
}

void TestCheckReport::ignoring()
{
    QFETCH(QStringList, config);
    QFETCH(QStringList, ignored);
    QFETCH(QStringList, results);
    const CheckedConfig checked = this->config(coresFrom(config));
    for (const QString &refusal : {QString(), QString("Nothing can be saved.")}) {
        const Tool::FileCheck check(checked.cores.list, checked.lines, m_names, refusal,
                                    rulesOf(ignored));
        QStringList found;
        for (int i = 0; i < check.count(); ++i)
            found += briefOf(check.at(i, TARN::CandidateSearch(m_names)));
        if (!refusal.isEmpty() && !ignored.contains("save-check"))
            results.prepend("error save-check ");
        QCOMPARE(found, results);
        const Tool::CheckCounts counts = check.counts();
        QCOMPARE(counts.errors, results.filter(QRegExp("^error")).size());
        QCOMPARE(counts.warnings, results.filter(QRegExp("^warning")).size());
        QCOMPARE(counts.notes, results.filter(QRegExp("^note")).size());
    }
}

/// Nothing is lost, nothing said twice, and every line is that of the place.
void TestCheckReport::randomResultsAreThoseOfAuditAndSaveCheck()
{
    const quint32 seed = TarnTest::setting("TARN_SEED", 4711);
    int saveMessages = 0;
    for (quint32 round = 0; round < TarnTest::setting("TARN_ROUNDS", 200); ++round) {
        TarnTest::RandomDesign random(seed + round);
        const TarnTest::KnownDesign design = random.design();
        const CheckedConfig checked = config(Cores(TARN::newCores(random.config(design))));
        const TARN::DesignNames names(design.netlist.get());
        const Tool::FileCheck check(checked.cores.list, checked.lines, names, {}, {});
        const TARN::CandidateSearch search(names);
        QVector<QStringList> found;
        QStringList saveErrors;
        for (int i = 0; i < check.count(); ++i) {
            const Tool::CheckResult result = check.at(i, search);
            QVERIFY(result.rule != Tool::saveCheckRule());
            found.append({Tool::checkRules().at(result.rule).id, result.place.text, result.message,
                          result.name, QString::number(result.others.size())});
            if (!result.saveMessage.isEmpty())
                saveErrors += result.saveMessage;
            QCOMPARE(result.level, result.saveMessage.isEmpty()
                                       ? Tool::checkRules().at(result.rule).severity
                                       : Severity::Error);
        }
        const auto findings = TARN::auditConfig(checked.cores.list, design.netlist.get());
        const TARN::ConfigSnapshot snapshot = TARN::snapshotOf(checked.cores.list);
        QVector<QStringList> expected;
        for (const TARN::Finding &finding : findings)
            expected.append({TARN::ruleId(finding.rule), TARN::placeText(finding.place, snapshot),
                             finding.text, finding.name, QString::number(finding.others.size())});
        QVERIFY2(found == expected, qPrintable(QString("seed %1").arg(seed + round)));
        QStringList errors = TARN::checkConfig(checked.cores.list, design.netlist.get());
        saveMessages += errors.size();
        errors.sort();
        saveErrors.sort();
        QCOMPARE(saveErrors, errors);
        if (round % 10 == 0)
            keepLog(outputOf("sarif", "random.tarn", check, search));
    }
    QVERIFY(saveMessages > 50);
}

void TestCheckReport::rulesAreThoseOfTheFindings()
{
    const QVector<Tool::CheckRule> &rules = Tool::checkRules();
    QSet<QString> ids;
    for (int i = 0; i < Tool::saveCheckRule(); ++i) {
        QCOMPARE(rules.at(i).id, TARN::ruleId(Rule(i)));
        QCOMPARE(rules.at(i).severity, TARN::severityOf(Rule(i)));
        QCOMPARE(Tool::ruleWithId(rules.at(i).id), i);
        ids.insert(rules.at(i).id);
    }
    QCOMPARE(TARN::ruleId(Rule(Tool::saveCheckRule())), QString());
    QCOMPARE(rules.last().id, QString("save-check"));
    ids.insert(rules.last().id);
    QCOMPARE(ids.size(), rules.size());
    QCOMPARE(Tool::ruleWithId("net"), -1);
    for (const Tool::CheckRule &rule : rules) {
        QVERIFY(rule.meaning.endsWith('.') && !rule.meaning.contains('\n'));
        QVERIFY(rule.cause.endsWith('.') && rule.advice.endsWith('.'));
    }
}

/// docs/rules.md has each rule in its table and in a section with an example and what to do.
void TestCheckReport::pageDescribesTheRules()
{
    const QString page = QString::fromUtf8(TarnTest::readFile(TARN_SOURCE_DIR "/docs/rules.md"));
    QStringList rows;
    QStringList ids;
    for (const Tool::CheckRule &rule : Tool::checkRules()) {
        const QString level = Tool::levelName(rule.severity);
        rows += QString("| [`%1`](#%1) | %2 | %3 |\n").arg(rule.id, level, rule.meaning);
        ids += rule.id;
        const QString section = page.section("\n### " + rule.id + '\n', 1).section("\n### ", 0, 0);
        const QString words = QString(section)
                                  .replace(QRegularExpression("\\[([^]]*)\\]\\([^)]*\\)"), "\\1")
                                  .simplified();
        const QString beginning = QString("**%1:** %2 %3").arg(level, rule.meaning, rule.cause);
        QVERIFY2(words.startsWith(beginning), qPrintable(words + "\n\n" + beginning));
        QVERIFY2(section.contains(" [" + rule.id + "]\n"), qPrintable(rule.id));
        QVERIFY2(section.contains("\n*What to do:* "), qPrintable(rule.id));
    }
    QCOMPARE(QStringList(page.split('\n').filter(QRegularExpression("^\\| \\[`"))).join('\n') +
                 '\n',
             rows.join(""));
    QStringList headings;
    for (const QString &line : page.section("\n## Rules\n", 1).split('\n')) {
        if (line.startsWith("### "))
            headings += line.mid(4);
    }
    QCOMPARE(headings, ids);
}

/// However many names are missing, searching for others stays quick.
void TestCheckReport::manyMissingNames()
{
    QStringList lines{"core"};
    for (int port = 0; port < 60; ++port) {
        QString line = "in:";
        for (int bit = 0; bit < 200; ++bit)
            line += QString(" top/n_%1_%2").arg(port).arg(bit);
        lines += line;
    }
    const CheckedConfig checked = config(coresFrom(lines + lines));
    const Tool::FileCheck check(checked.cores.list, checked.lines, m_names, {}, {});
    QCOMPARE(check.count(), 24000);
    QCOMPARE(check.missing().size(), 10000);
    QSet<QString> names;
    for (const TARN::MissingName &missing : check.missing())
        names.insert(missing.name);
    QVERIFY(names.contains("top/n_0_0"));
    QVERIFY(names.contains("top/n_49_199"));
}

TARN_TEST_MAIN(TestCheckReport)
#include "tst_checkreport.moc"
