// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/testcase.h>

#include <probes/portbits.h>

#include <QApplication>
#include <QTest>

class TestPortBits : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void bitsFollowTheWidth_data();
    void bitsFollowTheWidth();
    void signalsTakeTheirBits_data();
    void signalsTakeTheirBits();
};

void TestPortBits::bitsFollowTheWidth_data()
{
    QTest::addColumn<QString>("bits");
    QTest::addColumn<int>("previous");
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("fitted");
    QTest::newRow("same width") << "1010" << 4 << 4 << "1010";
    QTest::newRow("same width, filled up on the left") << "00000101" << 5 << 5 << "00101";
    QTest::newRow("shrinks") << "1011" << 4 << 2 << "10";
    QTest::newRow("shrinks to nothing") << "1011" << 4 << 0 << "";
    QTest::newRow("grows") << "1011" << 4 << 6 << "101100";
    QTest::newRow("grows, filled up on the left") << "00000101" << 3 << 5 << "10100";
    QTest::newRow("unknown before, value too long") << "00001011" << 0 << 3 << "011";
    QTest::newRow("unknown before, value too short") << "1011" << 0 << 6 << "101100";
    QTest::newRow("no bits") << "" << 0 << 3 << "000";
    QTest::newRow("nothing at all") << "" << 0 << 0 << "";
}

void TestPortBits::bitsFollowTheWidth()
{
    QFETCH(QString, bits);
    QFETCH(int, previous);
    QFETCH(int, width);
    QFETCH(QString, fitted);
    QCOMPARE(TARN::fittedBits(bits, previous, width), fitted);
}

void TestPortBits::signalsTakeTheirBits_data()
{
    QTest::addColumn<QString>("bits");
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("taken");
    QTest::addColumn<QString>("left");
    QTest::newRow("front") << "1011" << 3 << "101"
                           << "1";
    QTest::newRow("all") << "1011" << 4 << "1011"
                         << "";
    QTest::newRow("too few") << "11" << 4 << "0000"
                             << "";
    QTest::newRow("none left") << "" << 1 << "0"
                               << "";
}

void TestPortBits::signalsTakeTheirBits()
{
    QFETCH(QString, bits);
    QFETCH(int, width);
    QFETCH(QString, taken);
    QFETCH(QString, left);
    QCOMPARE(TARN::takeBits(bits, width), taken);
    QCOMPARE(bits, left);
}

TARN_TEST_MAIN(TestPortBits)

#include "tst_portbits.moc"
