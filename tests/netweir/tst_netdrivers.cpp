// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/signals/netdrivers.h>
#include <netweir/internal/signals/signaltables.h>

#include <support/testcase.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>

using namespace NETWEIR::Internal;

class TestNetDrivers : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void numbersNetsByPointer_data();
    void numbersNetsByPointer();
    void countsDrivers();
    void followsSources();
    void refusesCircles();
};

void TestNetDrivers::numbersNetsByPointer_data()
{
    QTest::addColumn<quint64>("distance");
    QTest::newRow("as they are") << quint64(160);
    QTest::newRow("side by side") << quint64(1);
    QTest::newRow("two to a place") << quint64(8);
    QTest::newRow("equal lowest bits") << (quint64(1) << 24);
    QTest::newRow("equal lowest bits, very far apart") << (quint64(1) << 40);
}

void TestNetDrivers::numbersNetsByPointer()
{
    QFETCH(quint64, distance);
    constexpr int Nets = 200000;
    constexpr int MostMilliseconds = 10000; // Hundreds of times what it takes.
    QElapsedTimer timer;
    timer.start();
    NetDrivers drivers;
    for (int i = 0; i < Nets; ++i)
        QCOMPARE(drivers.add(quint64(i) * distance + 0x5623D6BE2E50), i);
    for (int i = Nets - 1; i >= 0; --i)
        QCOMPARE(drivers.add(quint64(i) * distance + 0x5623D6BE2E50), i);
    QCOMPARE(drivers.size(), Nets);
    QVERIFY2(timer.elapsed() < MostMilliseconds, qPrintable(QString::number(timer.elapsed())));
}

void TestNetDrivers::countsDrivers()
{
    NetDrivers drivers;
    QCOMPARE(drivers.add(TableLine{10, false, 0, 0}), 0);
    QCOMPARE(drivers.add(TableLine{11, false, 2, 0}), 1);
    QCOMPARE(drivers.add(TableLine{12, true, 0, 0}), 2);
    QCOMPARE(drivers.add(TableLine{13, false, 1000000, 0}), 3);
    QCOMPARE(drivers.add(TableLine{13, false, 1000000, 0}), 3);
    QVERIFY(drivers.complete());
    QCOMPARE(drivers.driversOf(0), 0);
    QCOMPARE(drivers.driversOf(1), 2);
    QCOMPARE(drivers.driversOf(2), 1);
    QCOMPARE(drivers.driversOf(3), 255);
    QVERIFY(!drivers.isDriven(0));
    QVERIFY(drivers.isDriven(1));
    drivers.addDriver(0);
    drivers.addDriver(1);
    QCOMPARE(drivers.driversOf(0), 1);
    QCOMPARE(drivers.driversOf(1), 2);
}

void TestNetDrivers::followsSources()
{
    NetDrivers drivers;
    drivers.add(TableLine{10, false, 0, 11}); // Before its source is known.
    drivers.add(TableLine{11, false, 0, 12});
    drivers.add(TableLine{12, true, 0, 0});
    drivers.add(TableLine{13, false, 0, 14});
    drivers.add(TableLine{14, false, 0, 0});
    drivers.add(TableLine{15, false, 1, 14});
    QVERIFY(drivers.complete());
    const auto net = [&drivers](quint64 pointer) { return drivers.add(pointer); };
    QCOMPARE(drivers.sourceOf(net(10)), net(12));
    QCOMPARE(drivers.sourceOf(net(11)), net(12));
    QCOMPARE(drivers.sourceOf(net(12)), net(12));
    QCOMPARE(drivers.sourceOf(net(13)), net(14));
    QVERIFY(drivers.isDriven(net(10)));
    QVERIFY(!drivers.isDriven(net(13)));
    QVERIFY(drivers.isDriven(net(15)));
    QVERIFY(!drivers.isDriven(net(14)));
}

void TestNetDrivers::refusesCircles()
{
    NetDrivers drivers;
    drivers.add(TableLine{9, false, 0, 10});
    drivers.add(TableLine{10, false, 0, 11});
    drivers.add(TableLine{11, false, 0, 12});
    drivers.add(TableLine{12, false, 0, 10});
    QVERIFY(!drivers.complete());
}

TARN_TEST_MAIN(TestNetDrivers)
#include "tst_netdrivers.moc"
