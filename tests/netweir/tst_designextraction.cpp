// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designfixture.h"
#include "temporaryfolder.h"
#include "toolscript.h"

#include <netweir/designextraction.h>

#include <support/testcase.h>

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

#include <functional>
#include <new>

using namespace NETWEIR;
using TarnTest::DesignFixture;
using TarnTest::ToolScript;

namespace {

const QString Cancelled = QStringLiteral("ERROR: Reading the design was cancelled.");

/// Beginning of the script of a tool that preprocesses a design of "module top; endmodule".
const QByteArray PreprocessTop("case \"$1\" in -E) echo '`line 1 \"netweir_s1/top.v\" 1';"
                               " echo 'module top; endmodule'; exit 0;; esac\n");

/// Records what the extraction tells, and acts on it.
class Recorder final : public ExtractionMonitor
{
public:
    void phaseChanged(const QString &phase) override
    {
        phases.append(phase);
        if (onPhase)
            onPhase();
    }
    void ticked(qint64 elapsedMilliseconds) override
    {
        ticks.append(elapsedMilliseconds);
        if (onTick)
            onTick();
    }
    bool isCancelled() const override { return cancelled; }
    int inputDelay() override
    {
        ++waits;
        return waits <= delays ? 20 : 0;
    }

    QStringList phases;
    QVector<qint64> ticks;
    int waits = 0; ///< Calls of inputDelay().
    std::function<void()> onPhase;
    std::function<void()> onTick;
    bool cancelled = false;
    int delays = 0; ///< The number of waits that begin without user input.
};

/// The results of an extraction.
struct Results
{
    QStringList tops;
    QStringList modules;
    QStringList messages;

    bool findModules(DesignExtraction *extraction, ExtractionMonitor *monitor = nullptr)
    {
        *this = Results();
        return extraction->findModules(&tops, &modules, &messages, monitor);
    }

    /// Full name of the top, null without a netlist.
    QString buildNetlist(DesignExtraction *extraction, ExtractionMonitor *monitor = nullptr)
    {
        messages.clear();
        const std::unique_ptr<RtlNetlist> netlist = extraction->buildNetlist(&messages, monitor);
        return netlist ? netlist->top()->instName() : QString();
    }
};

} // namespace

/// An extraction in a program without windows.
class TestDesignExtraction : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void readsADesign_data();
    void readsADesign();
    void callsMayBeRepeatedInAnyOrder();
    void saysThatThereIsNoDesign();
    void errorsOfSourcesAreMessages();
    void ticksWhileItWaits();
    void asksAgainAfterTheInputDelay();
    void cancelEndsEverything_data();
    void cancelEndsEverything();
    void cancelledMonitorLetsNothingBegin();
    void extractionContinuesAfterCancel();
    void deletionEndsWhatRuns();
    void lackOfMemoryIsAnError_data();
    void lackOfMemoryIsAnError();

private:
    void addTop(DesignFixture *design) const
    {
        design->add(QStringLiteral("top.v"), "module top; endmodule\n");
    }

    const TarnTest::TemporaryFolder m_folder;
};

void TestDesignExtraction::cleanup()
{
    QCOMPARE(debugLines(), QStringList());
    TestCase::cleanup();
    m_folder.verifyNothingIsLeft();
}

void TestDesignExtraction::readsADesign_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QString>("phases");
    const QString one = QStringLiteral("Reading sources|Elaborating design|Building netlist");
    const QString two = QStringLiteral("Reading sources|Elaborating design|"
                                       "Reading the elaborated design|Building netlist");
    QTest::newRow("Verilog") << QStringList("top.v") << one;
    QTest::newRow("VHDL") << QStringList("top.vhd") << one;
    QTest::newRow("both") << QStringList{"both.v", "leaf.vhd"} << two;
}

void TestDesignExtraction::readsADesign()
{
    const QMap<QString, QByteArray> contents{
        {"top.v", "module top; leaf u(); endmodule module leaf; endmodule\n"},
        {"top.vhd", "entity leaf is end;\narchitecture a of leaf is begin end;\n"
                    "entity top is end;\narchitecture a of top is begin\n"
                    "u: entity work.leaf;\nend;\n"},
        {"both.v", "module top; leaf u(); endmodule\n"},
        {"leaf.vhd", "entity leaf is end;\narchitecture a of leaf is begin end;\n"}};
    QFETCH(QStringList, files);
    DesignFixture design;
    for (const QString &file : files)
        design.add(file, contents.value(file));
    DesignExtraction extraction(design.info());
    Results results;
    Recorder recorder;
    QVERIFY(results.findModules(&extraction, &recorder));
    QCOMPARE(results.tops, QStringList("top"));
    results.modules.sort();
    QCOMPARE(results.modules, (QStringList{"leaf", "top"}));
    QCOMPARE(results.messages, QStringList());
    QCOMPARE(recorder.phases.value(0), QStringLiteral("Reading sources"));
    QCOMPARE(results.buildNetlist(&extraction, &recorder), QStringLiteral("top"));
    QCOMPARE(results.messages, QStringList());
    recorder.phases.removeDuplicates(); // Several attempts and languages repeat phases.
    QTEST(recorder.phases.join('|'), "phases");
    QVERIFY(extraction.spentMilliseconds() > 0);
}

void TestDesignExtraction::callsMayBeRepeatedInAnyOrder()
{
    DesignFixture design;
    addTop(&design);
    DesignExtraction extraction(design.info());
    Results results;
    QCOMPARE(results.buildNetlist(&extraction), QStringLiteral("top"));
    QVERIFY(results.findModules(&extraction));
    QVERIFY(results.findModules(&extraction));
    QCOMPARE(results.tops, QStringList("top"));
    QCOMPARE(results.buildNetlist(&extraction), QStringLiteral("top"));
    QCOMPARE(results.buildNetlist(&extraction), QStringLiteral("top"));
    QCOMPARE(results.messages, QStringList());
    design.add(QStringLiteral("top.v"), "module other; endmodule\n");
    QCOMPARE(results.buildNetlist(&extraction), QStringLiteral("other"));
}

void TestDesignExtraction::saysThatThereIsNoDesign()
{
    const QStringList expected("ERROR: No design has been read.");
    DesignExtraction extraction;
    Results results;
    QVERIFY(!results.findModules(&extraction));
    QCOMPARE(results.messages, expected);
    QCOMPARE(results.buildNetlist(&extraction), QString());
    QCOMPARE(results.messages, expected);
    QCOMPARE(extraction.spentMilliseconds(), 0);
}

void TestDesignExtraction::errorsOfSourcesAreMessages()
{
    DesignFixture design;
    design.add(QStringLiteral("top.v"), "module top;\nwire = 1;\nendmodule\n");
    DesignExtraction extraction(design.info());
    Results results;
    results.messages = QStringList("ERROR: of the caller");
    QStringList messages("ERROR: of the caller");
    QVERIFY(!extraction.findModules(&results.tops, &results.modules, &messages));
    QCOMPARE(messages.first(), QStringLiteral("ERROR: of the caller"));
    QVERIFY2(messages.value(1).startsWith("ERROR: " + design.path("top.v") + ":2:"),
             qPrintable(messages.join('\n')));

    design.add(QStringLiteral("top.v"), "module top; endmodule\n");
    QVERIFY(extraction.findModules(&results.tops, &results.modules, &messages));
}

void TestDesignExtraction::ticksWhileItWaits()
{
    const ToolScript slow("sleep 0.6\n" + ToolScript::elaborate());
    DesignFixture design;
    addTop(&design);
    DesignExtraction extraction(design.info());
    Results results;
    Recorder recorder;
    QElapsedTimer timer;
    timer.start();
    QVERIFY(results.findModules(&extraction, &recorder));
    const qint64 whole = timer.elapsed();
    // Less often on a busy machine, and Qt takes the interval not too exactly.
    QVERIFY2(recorder.ticks.size() >= 2, qPrintable(QString::number(recorder.ticks.size())));
    QVERIFY2(recorder.ticks.size() <= whole / 150, qPrintable(QString::number(whole)));
    qint64 last = 0;
    for (const qint64 tick : qAsConst(recorder.ticks)) {
        QVERIFY(tick > last && tick <= whole);
        last = tick;
    }
}

void TestDesignExtraction::asksAgainAfterTheInputDelay()
{
    const ToolScript slow("sleep 0.3\n" + ToolScript::elaborate());
    DesignFixture design;
    addTop(&design);
    DesignExtraction extraction(design.info());
    Results results;
    Recorder plain;
    QVERIFY(results.findModules(&extraction, &plain));
    Recorder delayed;
    delayed.delays = 10;
    QVERIFY(results.findModules(&extraction, &delayed));
    QVERIFY2(delayed.waits > 10, qPrintable(QString::number(delayed.waits)));
    QVERIFY2(plain.waits < 10, qPrintable(QString::number(plain.waits)));
}

void TestDesignExtraction::cancelEndsEverything_data()
{
    QTest::addColumn<QByteArray>("tool");
    QTest::addColumn<QString>("how");
    const QByteArray hanging("sleep 1000 & sleep 1000\n");
    const QByteArray stubborn("trap '' TERM INT HUP\nwhile true; do sleep 1000; done\n");
    for (const char *how : {"phase", "tick", "wake"}) {
        QTest::addRow("while preprocessing, by %s", how) << hanging << how;
        QTest::addRow("while elaborating, by %s", how) << PreprocessTop + hanging << how;
    }
    QTest::newRow("a tool that ignores signals") << stubborn << "tick";
}

void TestDesignExtraction::cancelEndsEverything()
{
    QFETCH(QByteArray, tool);
    QFETCH(QString, how);
    const bool elaborates = tool.startsWith(PreprocessTop);
    const QString phase =
        elaborates ? QStringLiteral("Elaborating design") : QStringLiteral("Reading sources");
    const ToolScript fake(tool);
    DesignFixture design;
    addTop(&design);
    DesignExtraction extraction(design.info());
    Recorder recorder;
    QElapsedTimer sinceCancel;
    int ticks = -1;
    const auto cancel = [&] {
        sinceCancel.start();
        ticks = recorder.ticks.size();
        recorder.cancelled = true;
    };
    QTimer poll;
    connect(&poll, &QTimer::timeout, this, [&] {
        if (recorder.cancelled || recorder.phases.value(recorder.phases.size() - 1) != phase ||
            m_folder.processes().isEmpty())
            return;
        cancel();
        recorder.wake();
    });
    if (how == QLatin1String("wake"))
        poll.start(1);
    else if (how == QLatin1String("tick"))
        recorder.onTick = [&] {
            QVERIFY(!m_folder.processes().isEmpty());
            cancel();
        };
    else
        recorder.onPhase = [&] {
            if (recorder.phases.last() == phase)
                cancel();
        };
    Results results;
    QVERIFY(!results.findModules(&extraction, &recorder));
    QVERIFY(sinceCancel.isValid());
    QVERIFY2(sinceCancel.elapsed() < 1000, qPrintable(QString::number(sinceCancel.elapsed())));
    QCOMPARE(recorder.ticks.size(), ticks); // It does not wait for the next one.
    QCOMPARE(results.messages, QStringList(Cancelled));
    QCOMPARE(recorder.phases.last(), phase);
    // The extraction still lives.
    m_folder.verifyNothingIsLeft();
}

void TestDesignExtraction::cancelledMonitorLetsNothingBegin()
{
    const ToolScript fake("sleep 1000\n");
    DesignFixture design;
    addTop(&design);
    DesignExtraction extraction(design.info());
    Recorder recorder;
    recorder.cancelled = true;
    recorder.wake(); // Nobody listens.
    Results results;
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!results.findModules(&extraction, &recorder));
    QCOMPARE(results.messages, QStringList(Cancelled));
    QCOMPARE(results.buildNetlist(&extraction, &recorder), QString());
    QCOMPARE(results.messages, QStringList(Cancelled));
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
}

void TestDesignExtraction::extractionContinuesAfterCancel()
{
    DesignFixture design;
    addTop(&design);
    DesignExtraction extraction(design.info());
    Results results;
    Recorder recorder;
    recorder.onPhase = [&recorder] {
        recorder.cancelled = recorder.phases.last() == QLatin1String("Building netlist");
    };
    QCOMPARE(results.buildNetlist(&extraction, &recorder), QString());
    QCOMPARE(results.messages, QStringList(Cancelled));
    m_folder.verifyNothingIsLeft();
    QCOMPARE(results.buildNetlist(&extraction), QStringLiteral("top"));
    QCOMPARE(results.messages, QStringList());
}

void TestDesignExtraction::deletionEndsWhatRuns()
{
    const ToolScript fake(PreprocessTop + "sleep 1000 & sleep 1000\n");
    DesignFixture design;
    addTop(&design);
    {
        DesignExtraction extraction(design.info());
        Results results;
        QVERIFY(results.findModules(&extraction)); // Waits a moment only.
        QVERIFY(!m_folder.processes().isEmpty());
    }
    m_folder.verifyNothingIsLeft();
}

void TestDesignExtraction::lackOfMemoryIsAnError_data()
{
    QTest::addColumn<QString>("phase");
    QTest::newRow("while finding modules") << "Reading sources";
    QTest::newRow("while building") << "Building netlist";
}

void TestDesignExtraction::lackOfMemoryIsAnError()
{
    QFETCH(QString, phase);
    DesignFixture design;
    addTop(&design);
    DesignExtraction extraction(design.info());
    Recorder recorder;
    recorder.onPhase = [&] {
        if (recorder.phases.last() == phase)
            throw std::bad_alloc();
    };
    Results results;
    bool failed = !results.findModules(&extraction, &recorder);
    if (!failed)
        failed = results.buildNetlist(&extraction, &recorder).isNull();
    QVERIFY(failed);
    QCOMPARE(results.messages,
             QStringList("ERROR: There is not enough memory to read the design."));
    m_folder.verifyNothingIsLeft();

    QCOMPARE(results.buildNetlist(&extraction), QString());
    QCOMPARE(results.messages, QStringList("ERROR: No design has been read."));
}

QTEST_GUILESS_MAIN(TestDesignExtraction)
#include "tst_designextraction.moc"
