// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configtext.h"

#include <support/processortime.h>
#include <support/testcase.h>

#include <model/configsnapshot.h>
#include <netweir/hierachy.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnetlist.h>

#include <QApplication>
#include <QTest>

#include <memory>

using TARN::auditConfig;
using TARN::ConfigAudit;
using TARN::ConfigSnapshot;
using TARN::DesignNames;
using TARN::Finding;
using TarnTest::coresFrom;

namespace {

/// top: clk, a, b, mem (not readable), rst (not drivable), data[7:0], rev[0:3], arr[1][1:0],
/// mix[3:0] (2 and 0 not drivable, 1 not readable), twin[3:0] and twin[1:0]; top/u0: a, state[8:0].
std::unique_ptr<NETWEIR::RtlNetlist> design()
{
    const NETWEIR::NetMarks notIn{true, false};
    const NETWEIR::NetMarks notOut{false, true};
    NETWEIR::NetlistBuilder builder("top");
    for (const char *name : {"clk", "a", "b"})
        builder.addNet(builder.top(), name);
    builder.addNet(builder.top(), "mem", notIn);
    builder.addNet(builder.top(), "rst", notOut);
    builder.addBus(builder.top(), "data", 7, 0);
    builder.addBus(builder.top(), "rev", 0, 3);
    builder.addBus(builder.top(), "arr[1]", 1, 0);
    builder.addBus(builder.top(), "mix", 3, 0, {{}, notOut, notIn, notOut});
    builder.addBus(builder.top(), "twin", 3, 0);
    builder.addBus(builder.top(), "twin", 1, 0);
    NETWEIR::Hierachy *u0 = builder.addHierachy(builder.top(), "u0", "core");
    builder.addNet(u0, "a");
    builder.addBus(u0, "state", 8, 0);
    return builder.take();
}

QStringList linesOf(const QVector<Finding> &findings)
{
    QStringList lines;
    for (const Finding &finding : findings)
        lines += TarnTest::textOf(finding);
    return lines;
}

QVector<Finding> findingsOf(const ConfigAudit &audit)
{
    QVector<Finding> findings;
    for (int i = 0; i < audit.count(); ++i)
        findings.append(audit.at(i));
    return findings;
}

QVector<Finding> auditOf(const QStringList &config, NETWEIR::RtlNetlist *netlist)
{
    const Cores cores = coresFrom(config);
    return auditConfig(cores.list, netlist);
}

} // namespace

class TestConfigAudit : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void rules_data();
    void rules();
    void texts_data();
    void texts();
    void nothingNeedsANetlistWithoutOne();
    void notesCanBeLeftOut();
    void rulesHaveIdsAndSeverities();
    void markedSignalsAreCounted();
    void placesAreNamedAsTheRowsShowThem();
    void findingsMoveWithTheirPorts();
    void anEditCostsLittle();
};

void TestConfigAudit::rules_data()
{
    QTest::addColumn<QStringList>("config");
    QTest::addColumn<QStringList>("findings");
    using Lines = QStringList;
    const auto add = [](const char *name, const Lines &config, const Lines &findings) {
        QTest::newRow(name) << config << findings;
    };

    add("no core", {}, {});
    add("all is well",
        {"core top/clk", "in: top/a top/data[7:0]=7,6,5,4,3,2,1,0", "out 0x1: top/b"}, {});

    add("net missing", {"core", "in: top/a top/gone", "out: top/gone a"},
        {"net-missing 0.In0.1 top/gone", "net-missing 0.Out0.0 top/gone",
         "net-missing 0.Out0.1 a"});
    add("a net is no bus, and a bus no net",
        {"core", "in: top/data[7:0] top/data[0]", "in: top/a=top/a"},
        {"net-missing 0.In0.0 top/data[7:0]", "net-missing 0.In1.0 top/a"});
    add("bus missing", {"core", "in: top/gone[1:0]=1,0 top/u0/data[7:0]=0"},
        {"net-missing 0.In0.0 top/gone[1:0]", "net-missing 0.In0.1 top/u0/data[7:0]"});
    add("a missing bus is not judged further", {"core", "out: top/gone[1:0]=top/rst,top/b"},
        {"net-missing 0.Out0.0 top/gone[1:0]"});

    add("bus has grown", {"core", "in: top/u0/state[7:0]=7,6,5,4,3,2,1,0"},
        {"bus-changed 0.In0.0 top/u0/state[7:0]"});
    add("bus has shrunk", {"core", "in: top/data[8:0]=8,7,6,5,4,3,2,1,0"},
        {"bus-changed 0.In0.0 top/data[8:0]"});
    add("bus is reversed", {"core", "in: top/rev[3:0]=3,2,1,0"},
        {"bus-changed 0.In0.0 top/rev[3:0]"});
    add("bus had no range", {"core", "in: top/data=7,6,5,4,3,2,1,0"},
        {"bus-changed 0.In0.0 top/data"});
    add("range of an array element", {"core", "in: top/arr[1][2:0]=2,1,0 top/arr[0][1:0]=1,0"},
        {"bus-changed 0.In0.0 top/arr[1][2:0]", "net-missing 0.In0.1 top/arr[0][1:0]"});
    add("two buses of one name",
        {"core", "in: top/twin[1:0]=1,0 top/twin[3:0]=3,2", "in: top/twin[2:0]=2,1,0"},
        {"bus-changed 0.In1.0 top/twin[2:0]"});
    add("bits of the bus are renamed", {"core", "in: top/rev[0:3]=0,1,2,top/rev.x"},
        {"bus-changed 0.In0.0 top/rev[0:3]"});
    add("bits of the bus are in another order", {"core", "in: top/rev[0:3]=0,2,1,3"},
        {"bus-changed 0.In0.0 top/rev[0:3]"});
    add("a bit of the bus occurs twice", {"core", "in: top/rev[0:3]=0,1,1,2"},
        {"bus-changed 0.In0.0 top/rev[0:3]", "repeated 0.In0.0.1 0.In0.0.2 top/rev[1]"});
    add("bits left out, in order, are no change", {"core", "in: top/rev[0:3]=1,3"}, {});
    add("single bits of a bus", {"core", "in: top/data[3] top/arr[1][0]"}, {});

    add("net not usable", {"core", "in: top/mem top/rst", "out: top/rst top/mem"},
        {"not-usable 0.In0.0 top/mem", "not-usable 0.Out0.0 top/rst"});
    add("bits of a bus not usable",
        {"core", "in: top/mix[3:0]=3,2,1,0", "out: top/mix[3:0]=3,2,1,0"},
        {"not-usable 0.In0.0.2 top/mix[3:0]", "not-usable 0.Out0.0.1 top/mix[3:0]"});
    add("excluded bits that the port does not have",
        {"core", "in: top/mix[3:0]=3,2,0", "out: top/mix[3:0]=3,1"}, {});
    add("a changed bus may be not usable", {"core", "out: top/mix[5:0]=5,4,3,2,1"},
        {"bus-changed 0.Out0.0 top/mix[5:0]", "not-usable 0.Out0.0.3 top/mix[5:0]"});

    add("clock missing", {"core top/gone", "in: top/a"}, {"clock-missing 0 top/gone"});
    add("clock not given", {"core none", "in: top/a"}, {"clock-missing 0"});
    add("clock not usable", {"core top/mem", "in: top/a"}, {"clock-not-usable 0 top/mem"});
    add("clock that is driven", {"core top/rst", "in: top/a"}, {});

    add("several drivers", {"core", "out: top/a", "out: top/b top/a", "core", "out: top/a"},
        {"several-drivers 0.Out0.0 0.Out1.1 1.Out0.0 top/a"});
    add("driven and read", {"core", "in: top/a", "out: top/a", "in: top/a"}, {});
    add("several drivers are sorted by name",
        {"core", "out: top/data[7:0]=7,6 top/b top/a", "out: top/b top/data[6] top/a"},
        {"several-drivers 0.Out0.2 0.Out1.2 top/a", "several-drivers 0.Out0.1 0.Out1.0 top/b",
         "several-drivers 0.Out0.0.1 0.Out1.1 top/data[6]"});

    add("repeated by a bus and a net", {"core", "in: top/data[3] top/data[7:0]=4,3"},
        {"repeated 0.In0.0 0.In0.1.1 top/data[3]"});
    add("repeated by two ranges of a bus",
        {"core", "in: top/u0/state[8:0]=8,1 top/u0/state[7:0]=7,1"},
        {"repeated 0.In0.0.1 0.In0.1.1 top/u0/state[1]", "bus-changed 0.In0.1 top/u0/state[7:0]"});
    add("repeated often", {"core", "in: top/a top/a top/b top/a"},
        {"repeated 0.In0.0 0.In0.1 0.In0.3 top/a"});
    add("repeated in a Probe Out port", {"core", "out: top/a top/a"},
        {"repeated 0.Out0.0 0.Out0.1 top/a", "several-drivers 0.Out0.0 0.Out0.1 top/a"});
    add("in two ports", {"core", "in: top/a", "in: top/a"}, {});

    add("value fits",
        {"core", "out 0x00FF: top/data[7:0]=7,6,5,4,3,2,1,0", "out 0x: top/a", "out: top/b",
         "out 0x0: top/u0/a"},
        {});
    add("value too wide",
        {"core", "out 0x1FF: top/data[7:0]=7,6,5,4,3,2,1,0", "out 0x2: top/a",
         "out 0x4: top/b top/u0/a"},
        {"value-width 0.Out0", "value-width 0.Out1", "value-width 0.Out2"});
    add("value of an empty port", {"core", "in: top/a", "out 0x1:", "out 0x0:"},
        {"value-width 0.Out0", "empty-port 0.Out0", "empty-port 0.Out1"});
    add("text that is no value", {"core", "out 0xQ: top/a"}, {});

    add("empty core", {"core"}, {"empty-core 0"});
    add("core of empty ports", {"core", "in:", "out:"},
        {"empty-core 0", "empty-port 0.In0", "empty-port 0.Out0"});
    add("one signal fills the core", {"core", "in:", "out: top/a"}, {"empty-port 0.In0"});

    add("all in order",
        {"core none", "in: top/mem top/gone", "out 0x8: top/rst top/rst", "core top/gone",
         "out: top/rst", "in: top/x"},
        {"clock-missing 0", "not-usable 0.In0.0 top/mem", "net-missing 0.In0.1 top/gone",
         "value-width 0.Out0", "not-usable 0.Out0.0 top/rst", "repeated 0.Out0.0 0.Out0.1 top/rst",
         "not-usable 0.Out0.1 top/rst", "clock-missing 1 top/gone", "net-missing 1.In0.0 top/x",
         "not-usable 1.Out0.0 top/rst", "several-drivers 0.Out0.0 0.Out0.1 1.Out0.0 top/rst"});
}

void TestConfigAudit::rules()
{
    QFETCH(QStringList, config);
    const auto netlist = design();
    QTEST(linesOf(auditOf(config, netlist.get())), "findings");
}

void TestConfigAudit::texts_data()
{
    QTest::addColumn<QStringList>("config");
    QTest::addColumn<QStringList>("texts");
    using Lines = QStringList;
    const auto add = [](const char *name, const Lines &config, const Lines &texts) {
        QTest::newRow(name) << config << texts;
    };

    add("missing", {"core", "in: top/%1 top/gone[1:0]=1,0"},
        {"The design has no net top/%1.", "The design has no bus top/gone[1:0]."});
    add("grown", {"core", "in: top/u0/state[7:0]=7,6,5,4,3,2,1,0 top/data[5:0]=5,4,3,2,1,0"},
        {"The bus top/u0/state[7:0] is top/u0/state[8:0] in the design now: 1 bit more.",
         "The bus top/data[5:0] is top/data[7:0] in the design now: 2 bits more."});
    add("shrunk", {"core", "in: top/arr[1][2:0]=2,1,0 top/twin[7:0]=7,6,5,4,3,2,1,0"},
        {"The bus top/arr[1][2:0] is top/arr[1][1:0] in the design now: 1 bit fewer.",
         "The bus top/twin[7:0] is top/twin[3:0] in the design now: 4 bits fewer."});
    add("some bits were excluded",
        {"core", "in: top/data[6:0]=6,5,1,0", "in: top/data[8:0]=5,1", "in: top/rev[3:0]=3,1"},
        {"The bus top/data[6:0] is top/data[7:0] in the design now: 1 bit more.",
         "The bus top/data[8:0] is top/data[7:0] in the design now: 1 bit fewer.",
         "The bus top/rev[3:0] is top/rev[0:3] in the design now: the same bits in reverse "
         "order."});
    add("more bits than the range has", {"core", "in: top/data[8:1]=8,7,6,5,4,3,2,1,0,9,10"},
        {"The bus top/data[8:1] is top/data[7:0] in the design now: other bits."});
    add("of the same width", {"core", "in: top/rev[3:0]=3,2,1,0 top/data[8:1]=8,7,6,5,4,3,2,1"},
        {"The bus top/rev[3:0] is top/rev[0:3] in the design now: the same bits in reverse order.",
         "The bus top/data[8:1] is top/data[7:0] in the design now: other bits."});
    add("of the same name", {"core", "in: top/rev[0:3]=0,1,2,top/rev.x", "in: top/rev[0:3]=3,0"},
        {"The bus top/rev[0:3] has no bit top/rev.x in the design now.",
         "The bus top/rev[0:3] has its bits in another order in the design now."});
    add("not usable",
        {"core", "in: top/mem top/mix[3:0]=1", "out: top/rst top/mix[3:0]=3,2",
         "out: top/mix[3:0]=2,0"},
        {"The net top/mem cannot be read: it has no value in the hardware.",
         "The bit top/mix[1] cannot be read: it has no value in the hardware.",
         "The net top/rst cannot be driven: the design drives it, or it is no wire.",
         "The bit top/mix[2] cannot be driven: the design drives it, or it is no wire.",
         "2 bits of the bus top/mix[3:0] cannot be driven: the design drives them, or they are no "
         "wires.",
         "The net top/mix[2] has several drivers: tarn_0, Probe Out0; tarn_0, Probe Out1."});
    add("clocks",
        {"core none", "in: top/a", "core top/gone", "in: top/a", "core top/mem", "in: top/a"},
        {"No synchronization clock specified.", "The design has no net top/gone, the user clock.",
         "The net top/mem cannot be the user clock: it has no value in the hardware."});
    add("drivers", {"core", "out: top/a", "out: top/a", "core", "out: top/a"},
        {"The net top/a has several drivers: tarn_0, Probe Out0; tarn_0, Probe Out1; tarn_1, Probe "
         "Out0."});
    add("many drivers",
        {"core", "out: top/a", "out: top/a", "out: top/a", "out: top/a", "out: top/a",
         "out: top/a"},
        {"The net top/a has several drivers: tarn_0, Probe Out0; tarn_0, Probe Out1; tarn_0, Probe "
         "Out2; tarn_0, Probe Out3; and 2 more."});
    add("repeated", {"core", "in: top/%2 top/%2", "in: top/b top/b top/b"},
        {"The design has no net top/%2.", "The port holds top/%2 twice.",
         "The design has no net top/%2.", "The port holds top/b 3 times."});
    add("value", {"core", "out 0x2F: top/a top/b"},
        {"The initial value 0x2F does not fit: its width is 6, that of the port is 2."});
    add("notes", {"core", "in:"},
        {"The core has no port that holds a signal.", "The port holds no signal."});
}

void TestConfigAudit::texts()
{
    QFETCH(QStringList, config);
    const auto netlist = design();
    QStringList texts;
    for (const Finding &finding : auditOf(config, netlist.get()))
        texts += finding.text;
    QTEST(texts, "texts");
}

void TestConfigAudit::nothingNeedsANetlistWithoutOne()
{
    const QStringList config{"core top/gone",
                             "in: top/gone top/gone[1:0]=1,0 top/gone",
                             "core none",
                             "out 0x4: top/rst top/rst",
                             "in:",
                             "core",
                             "in:"};
    QCOMPARE(
        linesOf(auditOf(config, nullptr)),
        (QStringList{"repeated 0.In0.0 0.In0.2 top/gone", "clock-missing 1", "empty-port 1.In0",
                     "value-width 1.Out0", "repeated 1.Out0.0 1.Out0.1 top/rst", "empty-core 2",
                     "empty-port 2.In0", "several-drivers 1.Out0.0 1.Out0.1 top/rst"}));
}

void TestConfigAudit::notesCanBeLeftOut()
{
    const Cores cores = coresFrom({"core", "in:", "out 0x1:", "core"});
    ConfigAudit audit(ConfigAudit::Notes::LeftOut);
    audit.update(TARN::snapshotOf(cores.list));
    QCOMPARE(linesOf(findingsOf(audit)), QStringList{"value-width 0.Out0"});
}

void TestConfigAudit::rulesHaveIdsAndSeverities()
{
    using TARN::Rule;
    const QVector<Rule> rules{Rule::NetMissing,   Rule::BusChanged,     Rule::NotUsable,
                              Rule::ClockMissing, Rule::ClockNotUsable, Rule::SeveralDrivers,
                              Rule::Repeated,     Rule::ValueWidth,     Rule::EmptyCore,
                              Rule::EmptyPort};
    QStringList lines;
    for (const Rule rule : rules) {
        static const char *const severities[] = {" note", " warning", " error"};
        lines += TARN::ruleId(rule) + severities[int(TARN::severityOf(rule))];
    }
    QCOMPARE(lines, (QStringList{"net-missing error", "bus-changed warning", "not-usable warning",
                                 "clock-missing error", "clock-not-usable error",
                                 "several-drivers error", "repeated warning", "value-width warning",
                                 "empty-core note", "empty-port note"}));
}

void TestConfigAudit::markedSignalsAreCounted()
{
    const auto netlist = design();
    const DesignNames names(netlist.get());
    const Cores cores = coresFrom({"core top/gone", "in: top/gone top/x top/a top/gone",
                                   "out: top/mix[5:0]=2,0 top/rst", "core none",
                                   "in: top/mix[5:0]=2,0 top/gone[1:0]=1,0", "core top/noclk"});
    ConfigAudit audit;
    audit.setNames(&names);
    audit.update(TARN::snapshotOf(cores.list));
    QCOMPARE(audit.markedCount(), 7);
}

void TestConfigAudit::placesAreNamedAsTheRowsShowThem()
{
    const Cores cores = coresFrom({"core", "in: a", "out: b"});
    cores.list.first()->index = 4;
    cores.list.first()->probeOuts.first()->index = 7;
    ConfigAudit audit;
    audit.update(TARN::snapshotOf(cores.list));
    QCOMPARE(audit.placeText({0}), QString("tarn_4"));
    QCOMPARE(audit.placeText({0, TARN::ProbeTypeIn, 0}), QString("tarn_4, Probe In0"));
    QCOMPARE(audit.placeText({0, TARN::ProbeTypeOut, 0, 2}), QString("tarn_4, Probe Out7"));
    QCOMPARE(audit.placeText({1}), QString());
    QCOMPARE(audit.placeText({-1}), QString());
    QCOMPARE(audit.placeText({0, TARN::ProbeTypeIn, 1}), QString());
}

/// A port that is the same object keeps its findings; a core in front of it only moves them.
void TestConfigAudit::findingsMoveWithTheirPorts()
{
    const auto netlist = design();
    const DesignNames names(netlist.get());
    Cores cores = coresFrom({"core", "in: top/gone", "out: top/a", "core", "out: top/a"});
    ConfigAudit audit;
    audit.setNames(&names);
    ConfigSnapshot snapshot = TARN::snapshotOf(cores.list);
    audit.update(snapshot);
    QCOMPARE(linesOf(findingsOf(audit)), (QStringList{"net-missing 0.In0.0 top/gone",
                                                      "several-drivers 0.Out0.0 1.Out0.0 top/a"}));

    Cores front = coresFrom({"core", "in: top/b", "out: top/a"});
    cores.list.prepend(front.list.takeFirst());
    snapshot = TARN::snapshotOf(cores.list, snapshot);
    audit.update(snapshot);
    QCOMPARE(linesOf(findingsOf(audit)),
             (QStringList{"net-missing 1.In0.0 top/gone",
                          "several-drivers 0.Out0.0 1.Out0.0 2.Out0.0 top/a"}));

    delete cores.list.takeAt(1);
    snapshot = TARN::snapshotOf(cores.list, snapshot);
    audit.update(snapshot);
    QCOMPARE(linesOf(findingsOf(audit)), QStringList{"several-drivers 0.Out0.0 1.Out0.0 top/a"});

    audit.update({});
    QCOMPARE(audit.count(), 0);
}

/// Every bit is missing and has two drivers. Looking at all of them again would take as long for
/// each edit as the first time.
void TestConfigAudit::anEditCostsLittle()
{
    constexpr int PortCount = 64;
    constexpr int Width = 256;
    Cores cores;
    for (int index = 0; index < 2; ++index) {
        TARN::TarnCore *core = cores.add(index);
        for (int port = 0; port < PortCount; ++port) {
            core->addProbeOut(port);
            for (int bit = 0; bit < Width; ++bit)
                core->probeOuts.last()->signals +=
                    TarnTest::signalFrom(QString("top/u_core/gone_%1").arg(port * Width + bit));
        }
    }
    const auto netlist = design();
    const DesignNames names(netlist.get());
    ConfigAudit audit;
    audit.setNames(&names);
    ConfigSnapshot snapshot = TARN::snapshotOf(cores.list);
    const qint64 start = TarnTest::processorNanoseconds();
    audit.update(snapshot);
    const qint64 first = TarnTest::processorNanoseconds() - start;
    QCOMPARE(audit.count(), 3 * PortCount * Width);

    qint64 later = 0;
    for (int edit = 0; edit < 10; ++edit) {
        cores.list.last()->probeOuts.at(edit)->signals.removeFirst();
        snapshot = TARN::snapshotOf(cores.list, snapshot);
        const qint64 before = TarnTest::processorNanoseconds();
        audit.update(snapshot);
        later += TarnTest::processorNanoseconds() - before;
        QCOMPARE(audit.count(), 3 * PortCount * Width - 2 * (edit + 1));
    }
    qInfo("first %lld us, ten edits %lld us", first / 1000, later / 1000);
    QVERIFY2(later < first, qPrintable(QString("%1 ns, %2 ns").arg(first).arg(later)));
}

TARN_TEST_MAIN(TestConfigAudit)
#include "tst_configaudit.moc"
