// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designfixture.h"
#include "netlisttext.h"
#include "temporaryfolder.h"
#include "toolscript.h"

#include <netweir/designextraction.h>
#include <netweir/extractionmonitor.h>

#include <support/testcase.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>

using namespace NETWEIR;
using TarnTest::DesignFixture;
using TarnTest::ToolScript;

namespace {

/// Beginning of a script line for what follows the preprocessor.
const QByteArray Preprocess("[ \"$1\" != -E ] || { verilator_bin \"$@\"; ");

/// What an extraction tells and returns.
struct Outcome
{
    QStringList messages;
    QStringList phases;
    QString netlist;

    bool operator==(const Outcome &other) const
    {
        return messages == other.messages && phases == other.phases && netlist == other.netlist;
    }

    /// For the report of a failed test.
    QByteArray text() const
    {
        return (messages + phases).join('\n').toUtf8() + '\n' + netlist.toUtf8();
    }
};

/// Records the phases, and cancels @p delay milliseconds after the beginning of a phase.
class Monitor final : public ExtractionMonitor
{
public:
    explicit Monitor(const QString &phaseToCancel = QString(), int delay = 0)
        : m_phaseToCancel(phaseToCancel)
        , m_delay(delay)
    {
    }

    void phaseChanged(const QString &phase) override
    {
        if (phases.isEmpty() || phases.last() != phase)
            phases.append(phase);
        if (phase == m_phaseToCancel && !m_sincePhase.isValid())
            m_sincePhase.start();
    }
    void ticked(qint64 /*elapsedMilliseconds*/) override {}
    bool isCancelled() const override
    {
        return m_sincePhase.isValid() && m_sincePhase.elapsed() >= m_delay;
    }

    QStringList phases;

private:
    const QString m_phaseToCancel;
    const int m_delay;
    QElapsedTimer m_sincePhase;
};

Outcome extract(const DesignFixture &design, const QString &top)
{
    QMap<QString, QVariant> info = design.info();
    info[QLatin1String(TE::DesignInfo::Top)] = top;
    DesignExtraction extraction(info);
    Monitor monitor;
    Outcome result;
    QStringList tops;
    QStringList modules;
    if (extraction.findModules(&tops, &modules, &result.messages, &monitor)) {
        const auto netlist = extraction.buildNetlist(&result.messages, &monitor);
        result.netlist = netlist ? TarnTest::netlistText(netlist->top()) : QString();
    }
    result.phases = monitor.phases;
    return result;
}

} // namespace

/// The elaborator starts together with the preprocessor if the project names the top. Everything
/// else stays as without it.
class TestEarlyRun : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void changesNoResult_data();
    void changesNoResult();
    void givesUpAtAnImportOfALaterPackage();
    void dependsOnNoToolInTime_data();
    void dependsOnNoToolInTime();
    void hasTheTimeOfAnyOtherRun();
    void endsOnCancel_data();
    void endsOnCancel();

private:
    /// The beginning of a script that notes each run of the elaborator: "early" or "late".
    QByteArray noteRuns() const;
    QStringList takeNotes() const;

    const TarnTest::TemporaryFolder m_folder;
};

void TestEarlyRun::cleanup()
{
    TestCase::cleanup();
    takeNotes();
    m_folder.verifyNothingIsLeft();
}

QByteArray TestEarlyRun::noteRuns() const
{
    return "[ \"$1\" = -E ] || if [ -p stubs.sv ]; then early=1; echo early; else echo late; fi >> "
           "'" +
           m_folder.path(QStringLiteral("tool-notes")).toLocal8Bit() + "'\n";
}

QStringList TestEarlyRun::takeNotes() const
{
    QFile file(m_folder.path(QStringLiteral("tool-notes")));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QString text = QString::fromLatin1(file.readAll());
    file.remove();
    return text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

void TestEarlyRun::changesNoResult_data()
{
    QTest::addColumn<QByteArrayList>("sources");
    QTest::addColumn<QStringList>("runs");
    const auto row = [](const char *name, const QByteArrayList &sources, const QStringList &runs) {
        QTest::newRow(name) << sources << runs;
    };
    const QByteArray sub("module sub(input c, output reg [7:0] q);\n"
                         "always @(posedge c) q <= q + 1;\nendmodule\n");
    const QByteArray top("module top(input c, output [7:0] q);\nsub u(.c(c), .q(q));\nendmodule\n");
    row("two files", {sub, top}, {"early"});
    row("packages before their use",
        {"package p; typedef logic [3:0] word; endpackage\n",
         "module top(input p::word a, output p::word b); assign b = a; endmodule\n"},
        {"early"});
    row("packages behind their use",
        {"module top(input p::word a, output p::word b); assign b = a; endmodule\n",
         "package p; typedef logic [3:0] word; endpackage\n"},
        {"early", "late"});
    row("an unknown module",
        {sub, "module top(input c); wire [7:0] w; sub s(.c(c)); U u(.c(c), .w(w)); endmodule\n"},
        {"early"});
    row("an array of an unknown module in a file that is read already",
        {"module top(input c); wire [3:0] w; U u[3:0](.c(c), .w(w)); sub s(.c(c)); endmodule\n",
         sub},
        {"early", "late"});
    row("hidden code",
        {"module top(input c);\n// synthesis translate_off\nnonsense\n// synthesis translate_on\n"
         "wire w = c;\nendmodule\n"},
        {"early"});
    row("a top that instantiates itself",
        {"module top #(parameter N = 2)(input c);\n"
         "generate if (N > 0) begin : g top #(N - 1) u(c); end endgenerate\nendmodule\n"},
        {"early", "late"});
    row("an error of the elaborator", {"module top(input c);\nwire w = nowhere.x;\nendmodule\n"},
        {"early"});
    row("an error of the preprocessor", {"`include \"none.vh\"\nmodule top; endmodule\n"},
        {"early"});
    row("a construct that cannot be read",
        {"module top(input c, a);\nassert property (@(posedge c) a ##1 a);\nendmodule\n"},
        {"early", "late"});
}

/// Compares with the extraction of a project without a top.
void TestEarlyRun::changesNoResult()
{
    QFETCH(QByteArrayList, sources);
    QFETCH(QStringList, runs);
    DesignFixture design;
    for (int i = 0; i < sources.size(); ++i)
        design.add(QStringLiteral("file%1.sv").arg(i), sources[i]);
    // The preprocessor ends late enough for the elaborator to read what it may read early.
    const ToolScript fake(noteRuns() + Preprocess + "code=$?; sleep 0.1; exit $code; }\n" +
                          ToolScript::elaborate());
    const Outcome reference = extract(design, QString());
    takeNotes();
    const Outcome outcome = extract(design, QStringLiteral("top"));
    QVERIFY2(outcome == reference, outcome.text() + "instead of\n" + reference.text());
    QCOMPARE(takeNotes(), runs);
}

/// The elaborator gets nothing that it would have to read again.
void TestEarlyRun::givesUpAtAnImportOfALaterPackage()
{
    const QByteArray package("package p; typedef logic word; endpackage\n");
    const QByteArray user("module top(input c); import p::*; word w; endmodule\n");
    const ToolScript fake(noteRuns() + Preprocess + "code=$?; sleep 0.1; exit $code; }\n" +
                          "[ -z \"$early\" ] || cat text0.sv >> '" +
                          m_folder.path(QStringLiteral("tool-notes")).toLocal8Bit() + "'\n" +
                          ToolScript::elaborate());
    DesignFixture design;
    design.add(QStringLiteral("a.sv"), user);
    design.add(QStringLiteral("b.sv"), package);
    QVERIFY(!extract(design, QStringLiteral("top")).netlist.isEmpty());
    QStringList notes = takeNotes();
    notes.removeAll(QStringLiteral("early")); // Unless it ended before it noted anything.
    QCOMPARE(notes, QStringList("late"));

    DesignFixture inOrder;
    inOrder.add(QStringLiteral("b.sv"), package);
    inOrder.add(QStringLiteral("a.sv"), user);
    QVERIFY(!extract(inOrder, QStringLiteral("top")).netlist.isEmpty());
    QCOMPARE(takeNotes(), QStringList({"early", QString::fromLatin1(package.trimmed())}));
}

void TestEarlyRun::dependsOnNoToolInTime_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QStringList>("runs");
    const auto row = [](const char *name, const QByteArray &script, const QStringList &runs) {
        QTest::newRow(name) << script << runs;
    };
    const QByteArray bursts(
        "[ \"$1\" != -E ] || { verilator_bin \"$@\" > all; code=$?; size=$(wc -c < all);"
        " for part in 1 2 3; do dd if=all bs=$((size / 3 + 1)) count=1"
        " skip=$((part - 1)) 2> dd; sleep 0.05; done; exit $code; }\n");
    row("writes in bursts", bursts, {"early"});
    row("elaborates late", "[ \"$1\" = -E ] || sleep 0.2\n", {"early"});
    row("preprocesses late", "[ \"$1\" != -E ] || sleep 0.2\n", {"early"});
    row("dies at once", "[ -z \"$early\" ] || kill -SEGV $$\n", {"early", "late"});
    row("dies in the middle", "[ -z \"$early\" ] || { cat text0.v > text; kill -SEGV $$; }\n",
        {"early", "late"});
    row("dies after all texts",
        "[ -z \"$early\" ] || { cat text0.v text1.v stubs.sv > text; kill -SEGV $$; }\n",
        {"early", "late"});
    row("fails without a reason", "[ -z \"$early\" ] || { cat text0.v > text; exit 3; }\n",
        {"early", "late"});
    row("writes half",
        "[ -z \"$early\" ] || { cat text0.v text1.v stubs.sv > text;"
        " echo '<verilator_xml>' > design.xml; exit 0; }\n",
        {"early", "late"});
    row("leaves no place for a file", "[ -z \"$early\" ] || mkdir text1.v.complete\n",
        {"early", "late"});
    row("reads a part of a file and then all", "[ -z \"$early\" ] || head -c 3 text0.v > text\n",
        {"early"});
    row("reads in another order", "[ -z \"$early\" ] || cat text1.v > text\n", {"early"});
    row("reads the last first", "[ -z \"$early\" ] || cat stubs.sv > text\n", {"early"});
    row("reads the last first, late",
        "[ -z \"$early\" ] || { sleep 0.2; cat stubs.sv text1.v > text; }\n", {"early"});
}

/// Compares with the tool alone.
void TestEarlyRun::dependsOnNoToolInTime()
{
    QFETCH(QByteArray, script);
    QFETCH(QStringList, runs);
    DesignFixture design;
    // More than a pipe holds.
    design.add(QStringLiteral("sub.v"), "module sub(input c, output q);\n" +
                                            QByteArray(200000, '\n') +
                                            "assign q = c;\nendmodule\n");
    design.add(QStringLiteral("top.v"),
               "module top(input c, output q);\nsub u(.c(c), .q(q));\nendmodule\n");
    const Outcome reference = extract(design, QStringLiteral("top"));
    QVERIFY(!reference.netlist.isEmpty());
    const ToolScript fake(noteRuns() + script + ToolScript::elaborate());
    const Outcome outcome = extract(design, QStringLiteral("top"));
    QVERIFY2(outcome == reference, outcome.text() + "instead of\n" + reference.text());
    const QStringList noted = takeNotes();
    QCOMPARE(noted.first(), QStringLiteral("early"));
    // A tool that reads in another order is known as such only when it waits already.
    if (!script.contains("cat text1.v >") && !script.contains("cat stubs.sv"))
        QCOMPARE(noted, runs);
}

/// The preprocessor needs most of the time that a run may take.
void TestEarlyRun::hasTheTimeOfAnyOtherRun()
{
    DesignFixture design;
    design.add(QStringLiteral("top.v"), "module top; wire w; endmodule\n");
    design.set(TE::DesignInfo::Timeout, 2);
    const ToolScript slow(noteRuns() + Preprocess +
                          "sleep 1.2; exit 0; }\ncat text0.v stubs.sv > text; sleep 1.2\n" +
                          ToolScript::elaborate());
    QVERIFY(!extract(design, QStringLiteral("top")).netlist.isEmpty());
    QCOMPARE(takeNotes(), QStringList("early"));

    design.set(TE::DesignInfo::Timeout, 1);
    const ToolScript hanging(noteRuns() + "[ \"$1\" = -E ] || sleep 1000\n" +
                             ToolScript::elaborate());
    const Outcome outcome = extract(design, QStringLiteral("top"));
    QCOMPARE(outcome.messages,
             QStringList("ERROR: Elaborating the design took longer than 1 seconds and was "
                         "stopped. Raise the timeout in the project's options."));
    QCOMPARE(takeNotes(), QStringList("early"));
}

void TestEarlyRun::endsOnCancel_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("phase");
    QTest::addColumn<int>("delay");
    const QString reading = QStringLiteral("Reading sources");
    const QString elaborating = QStringLiteral("Elaborating design");
    QTest::newRow("at once") << QByteArray() << reading << 0;
    QTest::newRow("before any text") << QByteArray("sleep 1000\n") << reading << 100;
    QTest::newRow("in the middle of a text")
        << Preprocess +
               "sleep 1000; }\n[ -z \"$early\" ] || { head -c 1 text0.v > text; sleep 1000; }\n"
        << reading << 300;
    QTest::newRow("while the elaborator reads nothing")
        << QByteArray("[ -z \"$early\" ] || sleep 1000\n") << elaborating << 100;
    QTest::newRow("while the elaborator reads slowly")
        << QByteArray("[ -z \"$early\" ] || exec < text0.v; [ -z \"$early\" ] || sleep 1000\n")
        << elaborating << 100;
    QTest::newRow("at the end")
        << QByteArray("[ -z \"$early\" ] || { cat text0.v text1.v stubs.sv > text; sleep 1000; }\n")
        << elaborating << 100;
}

/// None of the tools is waited for, and nothing of either remains; see cleanup().
void TestEarlyRun::endsOnCancel()
{
    QFETCH(QByteArray, script);
    QFETCH(QString, phase);
    QFETCH(int, delay);
    DesignFixture design;
    design.add(QStringLiteral("sub.v"), "module sub;\n" + QByteArray(200000, '\n') + "endmodule\n");
    design.add(QStringLiteral("top.v"), "module top; sub u(); endmodule\n");
    design.set(TE::DesignInfo::Top, QStringLiteral("top"));
    const ToolScript fake(noteRuns() + script + ToolScript::elaborate());
    DesignExtraction extraction(design.info());
    Monitor monitor(phase, delay);
    QStringList tops;
    QStringList modules;
    QStringList messages;
    QVERIFY(!extraction.findModules(&tops, &modules, &messages, &monitor));
    QCOMPARE(messages, QStringList("ERROR: Reading the design was cancelled."));
}

TARN_TEST_MAIN(TestEarlyRun)
#include "tst_earlyrun.moc"
