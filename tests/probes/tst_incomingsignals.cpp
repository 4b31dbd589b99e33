// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "signalsamples.h"

#include <probes/incomingsignals.h>
#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using TARN::IncomingSignals;
using TARN::SignalItem;
using TarnTest::bus;
using TarnTest::namesOf;
using TarnTest::net;

class TestIncomingSignals : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void strikesTheFirstOfTheName_data();
    void strikesTheFirstOfTheName();
    void reconcilesWithAShownSignal_data();
    void reconcilesWithAShownSignal();
    void struckSignalsAreNotMetAgain();
};

void TestIncomingSignals::strikesTheFirstOfTheName_data()
{
    QTest::addColumn<QList<SignalItem>>("incoming");
    QTest::addColumn<QString>("left");
    QTest::newRow("none comes") << QList<SignalItem>{} << "";
    QTest::newRow("another name") << QList<SignalItem>{net("b")} << "b";
    QTest::newRow("the name") << QList<SignalItem>{net("b"), net("a"), net("c")} << "b c";
    QTest::newRow("the name twice") << QList<SignalItem>{net("a"), net("b"), net("a")} << "b a";
    QTest::newRow("name of a member") << QList<SignalItem>{bus("d", {"a"})} << "d";
}

void TestIncomingSignals::strikesTheFirstOfTheName()
{
    QFETCH(QList<SignalItem>, incoming);
    QFETCH(QString, left);
    IncomingSignals items(incoming);
    items.strikeFirst("a");
    QCOMPARE(namesOf(items.left()).join(' '), left);
}

void TestIncomingSignals::reconcilesWithAShownSignal_data()
{
    QTest::addColumn<QList<SignalItem>>("incoming");
    QTest::addColumn<SignalItem>("shown");
    QTest::addColumn<bool>("covered");
    QTest::addColumn<QString>("left");
    const SignalItem d = bus("d", 2);
    const SignalItem d0 = net("d[0]");
    const SignalItem d1 = net("d[1]");
    const SignalItem x = net("x");
    using Items = QList<SignalItem>;
    QTest::newRow("net, nothing in common") << Items{x, d} << net("y") << false << "x d";
    QTest::newRow("net, the same") << Items{x, d1} << x << false << "d[1]";
    QTest::newRow("net, a bus covers it") << Items{x, d} << d1 << true << "x d";
    QTest::newRow("net, the same before the bus") << Items{d1, d} << d1 << false << "d";
    QTest::newRow("net, the same behind the bus") << Items{d, d1} << d1 << true << "d d[1]";
    QTest::newRow("bus, nothing in common") << Items{x, bus("e", 1)} << d << false << "x e";
    QTest::newRow("bus, the same") << Items{d, x} << d << false << "x";
    QTest::newRow("bus, members") << Items{d1, x, d0, d1} << d << false << "x";
    QTest::newRow("bus, members behind the same") << Items{d1, d, d0} << d << false << "d[0]";
}

void TestIncomingSignals::reconcilesWithAShownSignal()
{
    QFETCH(QList<SignalItem>, incoming);
    QFETCH(SignalItem, shown);
    QFETCH(bool, covered);
    QFETCH(QString, left);
    IncomingSignals items(incoming);
    QCOMPARE(items.reconcile(shown), covered);
    QCOMPARE(namesOf(items.left()).join(' '), left);
}

void TestIncomingSignals::struckSignalsAreNotMetAgain()
{
    IncomingSignals items({bus("d", 1), net("a"), bus("e", {"d[0]"}), net("a")});
    items.strikeFirst("a");
    items.strikeFirst("a");
    items.strikeFirst("a");
    QVERIFY(!items.reconcile(bus("d", {}))); // By its name alone: a signal without members.
    QVERIFY(items.reconcile(net("d[0]")));
    QCOMPARE(namesOf(items.left()), QStringList{"e"});
}

TARN_TEST_MAIN(TestIncomingSignals)

#include "tst_incomingsignals.moc"
