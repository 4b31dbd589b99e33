// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configtext.h"

#include <support/testcase.h>

#include <audit/signalmarks.h>
#include <netweir/hierachy.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>
#include <select/samplenetlist.h>

#include <QApplication>
#include <QTest>

using TARN::DesignNames;
using TARN::SignalMarks;
using TarnTest::signalFrom;
using TarnTest::signalsFrom;

namespace {

QString textOf(const SignalMarks::Mark &mark)
{
    return mark.rule ? TARN::ruleId(*mark.rule) + ": " + mark.text : mark.text;
}

} // namespace

/// The design is sampleNetlist().
class TestSignalMarks : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void marksOfSignals_data();
    void marksOfSignals();
    void marksOfBits();
    void portHasTheWorstMark_data();
    void portHasTheWorstMark();
    void nothingIsMarkedWithoutADesign();
    void baseOfABusName_data();
    void baseOfABusName();
    void busesByNameAndBase();

private:
    std::unique_ptr<NETWEIR::RtlNetlist> m_netlist = TarnTest::sampleNetlist();
    DesignNames m_names{m_netlist.get()};
};

void TestSignalMarks::marksOfSignals_data()
{
    QTest::addColumn<QString>("signal");
    QTest::addColumn<QString>("in");
    QTest::addColumn<QString>("out");
    const QString unread = " cannot be read: it has no value in the hardware.";
    const QString driven = " cannot be driven: the design drives it, or it is no wire.";

    QTest::newRow("net") << "top/clk"
                         << ""
                         << "";
    QTest::newRow("bit of a bus") << "top/data[0]"
                                  << ""
                                  << "";
    QTest::newRow("net not for Probe Out") << "top/rst"
                                           << ""
                                           << "not-usable: The net top/rst" + driven;
    QTest::newRow("net not for Probe In") << "top/u0/gated"
                                          << "not-usable: The net top/u0/gated" + unread << "";
    QTest::newRow("missing net") << "top/x"
                                 << "net-missing: The design has no net top/x."
                                 << "net-missing: The design has no net top/x.";
    QTest::newRow("bus") << "top/data[1:0]=1,0"
                         << "not-usable: The bit top/data[1]" + unread << "";
    QTest::newRow("bus without the excluded bit") << "top/data[1:0]=0"
                                                  << ""
                                                  << "";
    QTest::newRow("missing bus") << "top/u1/data[1:0]=1,0"
                                 << "net-missing: The design has no bus top/u1/data[1:0]."
                                 << "net-missing: The design has no bus top/u1/data[1:0].";
    const QString shrunk = "bus-changed: The bus top/u0/cnt[2:0] is top/u0/cnt[1:0] in the design "
                           "now: 1 bit fewer.";
    QTest::newRow("changed bus, the worse of two rules")
        << "top/u0/cnt[2:0]=2,1,0" << shrunk << shrunk;
}

void TestSignalMarks::marksOfSignals()
{
    QFETCH(QString, signal);
    SignalMarks marks;
    marks.setNames(&m_names);
    QTEST(textOf(marks.of(signalFrom(signal), TARN::ProbeTypeIn)), "in");
    QTEST(textOf(marks.of(signalFrom(signal), TARN::ProbeTypeOut)), "out");
}

void TestSignalMarks::marksOfBits()
{
    SignalMarks marks;
    marks.setNames(&m_names);
    const TARN::SignalItem data = signalFrom("top/data[2:0]=2,1,0");
    const auto markOf = [&](int bit) { return textOf(marks.ofBit(data, bit, TARN::ProbeTypeIn)); };
    QCOMPARE(markOf(0), QString("net-missing: The design has no net top/data[2]."));
    QCOMPARE(markOf(1),
             QString("not-usable: The net top/data[1] cannot be read: it has no value in "
                     "the hardware."));
    QCOMPARE(markOf(2), QString());
    QCOMPARE(markOf(3), QString());
    QCOMPARE(markOf(-1), QString());
}

void TestSignalMarks::portHasTheWorstMark_data()
{
    QTest::addColumn<QString>("signals");
    QTest::addColumn<QString>("mark");
    QTest::newRow("no signal") << ""
                               << "";
    QTest::newRow("good signals") << "top/clk top/data[0]"
                                  << "";
    QTest::newRow("one") << "top/clk top/rst top/clk"
                         << "not-usable: The net top/rst cannot be driven: the design drives it, "
                            "or it is no wire.";
    QTest::newRow("changed is worse than not usable")
        << "top/rst top/u0/cnt[2:1]=2,1 top/rst"
        << "bus-changed: The bus top/u0/cnt[2:1] is top/u0/cnt[1:0] in the design now: other bits.";
    QTest::newRow("missing is the worst") << "top/rst top/u0/cnt[2:1]=2,1 top/x top/y top/rst"
                                          << "net-missing: The design has no net top/x.";
}

void TestSignalMarks::portHasTheWorstMark()
{
    QFETCH(QString, signals);
    SignalMarks marks;
    marks.setNames(&m_names);
    QTEST(textOf(marks.ofPort(signalsFrom(signals), TARN::ProbeTypeOut)), "mark");
}

void TestSignalMarks::nothingIsMarkedWithoutADesign()
{
    SignalMarks marks;
    const QList<TARN::SignalItem> items = signalsFrom("top/x top/data[2:0]=2,1,0");
    QVERIFY(!marks.of(items.first(), TARN::ProbeTypeIn).rule);
    QVERIFY(!marks.ofPort(items, TARN::ProbeTypeIn).rule);
    marks.setNames(&m_names);
    QVERIFY(marks.of(items.first(), TARN::ProbeTypeIn).rule);
    marks.setNames(nullptr);
    QVERIFY(!marks.of(items.first(), TARN::ProbeTypeIn).rule);
    QVERIFY(!marks.ofBit(items.last(), 0, TARN::ProbeTypeIn).rule);
}

void TestSignalMarks::baseOfABusName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("base");
    QTest::newRow("range") << "top/d[7:0]"
                           << "top/d";
    QTest::newRow("negative indices") << "top/d[-1:-12]"
                                      << "top/d";
    QTest::newRow("element of an array") << "top/m[3][7:0]"
                                         << "top/m[3]";
    QTest::newRow("only the last range") << "d[3:0][7:0]"
                                         << "d[3:0]";
    for (const char *name :
         {"", "top/d", "top/d[3]", "d[:0]", "d[7:]", "d[-:0]", "d[x:0]", "d[7:x]", "d7:0]", "7:0]",
          ":0]", "0]", "]", "d[7:0", "d[7:0]q", "d(7:0)"})
        QTest::newRow(name) << name << name;
}

void TestSignalMarks::baseOfABusName()
{
    QFETCH(QString, name);
    QTEST(TARN::baseOfBusName(name).toString(), "base");
}

void TestSignalMarks::busesByNameAndBase()
{
    NETWEIR::NetlistBuilder builder("top");
    NETWEIR::RtlNetBus *narrow = builder.addBus(builder.top(), "d", 1, 0);
    NETWEIR::RtlNetBus *wide = builder.addBus(builder.top(), "d", 7, 0);
    NETWEIR::RtlNetBus *again = builder.addBus(builder.top(), "d", 1, 0);
    NETWEIR::RtlNetBus *element = builder.addBus(builder.top(), "d[0]", 1, 0);
    const auto netlist = builder.take();
    const DesignNames names(netlist.get());
    using Buses = QVector<NETWEIR::RtlNetBus *>;
    QCOMPARE(names.busesOfBase(QStringLiteral("top/d")), (Buses{narrow, wide, again}));
    QCOMPARE(names.busesOfBase(QStringLiteral("top/d[0]")), Buses{element});
    QCOMPARE(names.busesOfBase(QStringLiteral("top/d[1:0]")), Buses());
    QCOMPARE(names.bus("top/d[1:0]"), narrow);
    QCOMPARE(names.bus("top/d[7:0]"), wide);
    QCOMPARE(names.bus("top/d[3:0]"), static_cast<NETWEIR::RtlNetBus *>(nullptr));
    QCOMPARE(names.bus("top/d"), static_cast<NETWEIR::RtlNetBus *>(nullptr));
    QCOMPARE(names.net("top/d[1]"), narrow->nets().first());
    QCOMPARE(names.netlist(), netlist.get());
}

TARN_TEST_MAIN(TestSignalMarks)
#include "tst_signalmarks.moc"
