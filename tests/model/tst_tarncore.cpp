// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <model/tarncore.h>
#include <probes/signalsamples.h>
#include <support/testcase.h>

#include <QApplication>
#include <QMetaType>
#include <QTest>
#include <QVariant>

#include <type_traits>

using TARN::ProbeIn;
using TARN::ProbeOut;
using TARN::SignalItem;
using TARN::TarnCore;
using TarnTest::bus;
using TarnTest::net;

namespace {

template <typename Port>
QList<int> indexesOf(const QList<Port *> &ports)
{
    QList<int> indexes;
    for (const Port *port : ports)
        indexes.append(port->index);
    return indexes;
}

/// Adds @p count ports of either kind.
void addPorts(TarnCore *core, int count)
{
    for (int i = 0; i < count; ++i) {
        core->addProbeIn(i);
        core->addProbeOut(i);
    }
}

} // namespace

class TestTarnCore : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void newCoreIsEmpty();
    void newPortsGoToTheEnd();
    void removingDeletesThePortAtThePosition();
    void removingOutOfRangeDoesNothing_data();
    void removingOutOfRangeDoesNothing();
    void renumberingFollowsThePositions();
    void gettersLookUpPositions();
    void portsWithSignalsAreAvailable();
    void singleSignalsExpandBuses();
    void coreDeletesItsPorts();
    void portKindsHaveFixedNumbers();
    void defaultSignalIsUsableAndHasNoKind();
    void signalTravelsInAVariant();
};

void TestTarnCore::newCoreIsEmpty()
{
    const TarnCore core(7);
    QCOMPARE(core.index, 7);
    QVERIFY(core.module.isEmpty());
    QVERIFY(core.userClock.isEmpty());
    QVERIFY(core.probeIns.isEmpty());
    QVERIFY(core.probeOuts.isEmpty());
    QVERIFY(!core.syncUserClock);
}

void TestTarnCore::newPortsGoToTheEnd()
{
    TarnCore core(0);
    core.addProbeIn(5);
    core.addProbeIn(3);
    core.addProbeOut(9);
    QCOMPARE(indexesOf(core.probeIns), (QList<int>{5, 3}));
    QCOMPARE(indexesOf(core.probeOuts), QList<int>{9});
    QVERIFY(core.probeIns.last()->signals.isEmpty());
    QVERIFY(core.probeOuts.last()->signals.isEmpty());
    QVERIFY(core.probeOuts.last()->initialValue.isEmpty());
}

void TestTarnCore::removingDeletesThePortAtThePosition()
{
    TarnCore core(0);
    addPorts(&core, 3);
    core.removeProbeIn(1);
    core.removeProbeOut(0);
    QCOMPARE(indexesOf(core.probeIns), (QList<int>{0, 2}));
    QCOMPARE(indexesOf(core.probeOuts), (QList<int>{1, 2}));
}

void TestTarnCore::removingOutOfRangeDoesNothing_data()
{
    QTest::addColumn<int>("position");
    QTest::newRow("none selected") << -1;
    QTest::newRow("past the end") << 2;
    QTest::newRow("largest") << std::numeric_limits<int>::max();
    QTest::newRow("smallest") << std::numeric_limits<int>::min();
}

void TestTarnCore::removingOutOfRangeDoesNothing()
{
    QFETCH(int, position);
    TarnCore core(0);
    addPorts(&core, 2);
    core.removeProbeIn(position);
    core.removeProbeOut(position);
    QCOMPARE(indexesOf(core.probeIns), (QList<int>{0, 1}));
    QCOMPARE(indexesOf(core.probeOuts), (QList<int>{0, 1}));
}

void TestTarnCore::renumberingFollowsThePositions()
{
    TarnCore core(0);
    addPorts(&core, 3);
    core.removeProbeIn(1);
    core.removeProbeOut(0);
    core.updateProbeIn();
    QCOMPARE(indexesOf(core.probeIns), (QList<int>{0, 1}));
    QCOMPARE(indexesOf(core.probeOuts), (QList<int>{1, 2}));
    core.updateProbeOut();
    QCOMPARE(indexesOf(core.probeOuts), (QList<int>{0, 1}));
}

void TestTarnCore::gettersLookUpPositions()
{
    TarnCore core(0);
    core.addProbeIn(8);
    core.addProbeIn(4);
    core.addProbeOut(6);
    QCOMPARE(core.getProbeIn(1), core.probeIns.at(1));
    QCOMPARE(core.getProbeOut(0), core.probeOuts.at(0));
    QVERIFY(!core.getProbeIn(2));
    QVERIFY(!core.getProbeIn(-1));
    QVERIFY(!core.getProbeOut(1));
    QVERIFY(!core.getProbeOut(-1));
}

void TestTarnCore::portsWithSignalsAreAvailable()
{
    TarnCore core(0);
    addPorts(&core, 3);
    QVERIFY(core.getAvailableProbeIns().isEmpty());
    QVERIFY(core.getAvailableProbeOuts().isEmpty());

    core.probeIns.at(2)->signals.append(net(QStringLiteral("top/a")));
    core.probeOuts.at(0)->signals.append(net(QStringLiteral("top/b")));
    core.probeOuts.at(2)->signals.append(net(QStringLiteral("top/c")));
    QCOMPARE(core.getAvailableProbeIns(), QList<ProbeIn *>{core.probeIns.at(2)});
    QCOMPARE(core.getAvailableProbeOuts(),
             (QList<ProbeOut *>{core.probeOuts.at(0), core.probeOuts.at(2)}));
}

void TestTarnCore::singleSignalsExpandBuses()
{
    ProbeIn port;
    QVERIFY(port.singleSignals().isEmpty());
    port.signals = {
        bus(QStringLiteral("top/d[3:0]"), {QStringLiteral("top/d[3]"), QStringLiteral("top/d[2]"),
                                           QStringLiteral("top/d[1]"), QStringLiteral("top/d[0]")}),
        net(QStringLiteral("top/e"))};
    const QStringList bits = {QStringLiteral("top/d[3]"), QStringLiteral("top/d[2]"),
                              QStringLiteral("top/d[1]"), QStringLiteral("top/d[0]"),
                              QStringLiteral("top/e")};
    QCOMPARE(port.singleSignals(), bits);

    // The width of a port is the width of its signals, repeats included.
    port.signals.append(net(QStringLiteral("top/e")));
    port.signals.append(bus(QStringLiteral("top/empty"), {}));
    int width = 0;
    for (const SignalItem &signal : qAsConst(port.signals))
        width += signal.width();
    QCOMPARE(port.singleSignals().size(), width);
    QCOMPARE(port.singleSignals().mid(5),
             (QStringList{QStringLiteral("top/e"), QStringLiteral("top/empty")}));
}

void TestTarnCore::coreDeletesItsPorts()
{
    static int deleted = 0;
    struct Counted : ProbeOut
    {
        ~Counted() override { ++deleted; }
    };
    auto core = std::make_unique<TarnCore>(0);
    core->probeIns.append(new Counted);
    core->probeOuts.append(new Counted);
    core->probeOuts.append(new Counted);
    core->removeProbeOut(1);
    QCOMPARE(deleted, 1);
    core.reset();
    QCOMPARE(deleted, 3);
}

void TestTarnCore::portKindsHaveFixedNumbers()
{
    QCOMPARE(int(TARN::ProbeTypeIn), 0);
    QCOMPARE(int(TARN::ProbeTypeOut), 1);
    QVERIFY((std::is_base_of<ProbeIn, ProbeOut>::value));
}

void TestTarnCore::defaultSignalIsUsableAndHasNoKind()
{
    const SignalItem item;
    QVERIFY(item.name.isEmpty());
    QVERIFY(item.displayName.isEmpty());
    QVERIFY(item.members.isEmpty());
    QVERIFY(item.enabled);
    QVERIFY(item.usable);
    QCOMPARE(item.kind, -1);
    QCOMPARE(item.width(), 1);
}

void TestTarnCore::signalTravelsInAVariant()
{
    SignalItem original = bus(QStringLiteral("top/d"), {QStringLiteral("top/d[0]")});
    const QVariant variant = QVariant::fromValue(original);
    QCOMPARE(QByteArray(variant.typeName()), QByteArray("TARN::SignalItem"));
    QCOMPARE(QMetaType::type("TARN::SignalItem"), variant.userType());

    // The copy is deep.
    original.members[0].name = QStringLiteral("other");
    QCOMPARE(variant.value<SignalItem>().members.at(0).name, QStringLiteral("top/d[0]"));
}

TARN_TEST_MAIN(TestTarnCore)
#include "tst_tarncore.moc"
