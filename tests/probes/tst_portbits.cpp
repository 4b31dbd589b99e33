// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/testcase.h>

#include <support/setting.h>

#include <probes/initialvalueline.h>
#include <probes/portbits.h>

#include <QApplication>
#include <QRandomGenerator>
#include <QTest>

class TestPortBits : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void bitsFollowTheWidth_data();
    void bitsFollowTheWidth();
    void signalsTakeTheirBits_data();
    void signalsTakeTheirBits();
    void textsHaveDigitsForTheBits_data();
    void textsHaveDigitsForTheBits();
    void storedValuesAreShownAsFarAsTheyFit_data();
    void storedValuesAreShownAsFarAsTheyFit();
    void enteredValuesNeedNoMoreBitsThanThePort_data();
    void enteredValuesNeedNoMoreBitsThanThePort();
    void anyTextIsMaskedAsByTheLine();
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

void TestPortBits::textsHaveDigitsForTheBits_data()
{
    QTest::addColumn<QString>("bits");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("digits");
    QTest::newRow("none") << ""
                          << "0x0" << 1;
    QTest::newRow("one") << "1"
                         << "0x1" << 1;
    QTest::newRow("full digit") << "1010"
                                << "0xA" << 1;
    QTest::newRow("part of a digit") << "11111"
                                     << "0x1F" << 2;
    QTest::newRow("zeros in front") << "000000001"
                                    << "0x001" << 3;
}

void TestPortBits::textsHaveDigitsForTheBits()
{
    QFETCH(QString, bits);
    QFETCH(int, digits);
    QTEST(TARN::valueText(bits), "text");
    QCOMPARE(TARN::valueDigits(bits.size()), digits);
}

void TestPortBits::storedValuesAreShownAsFarAsTheyFit_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("bits");
    QTest::newRow("fits") << "0x5A" << 8 << "01011010";
    QTest::newRow("none") << "" << 8 << "00000000";
    QTest::newRow("no signals") << "0xF" << 0 << "";
    QTest::newRow("too few digits: zeros follow") << "0xA" << 8 << "10100000";
    QTest::newRow("too many digits: the first count") << "0x5AF" << 8 << "01011010";
    QTest::newRow("too many bits: the last count") << "0xFE" << 5 << "11110";
    QTest::newRow("lower case") << "0xab" << 8 << "10101011";
    QTest::newRow("without prefix: the digits that the mask has left") << "1F" << 8 << "00000000";
    QTest::newRow("nonsense") << "0x!z" << 4 << "0000";
}

void TestPortBits::storedValuesAreShownAsFarAsTheyFit()
{
    QFETCH(QString, stored);
    QFETCH(int, width);
    QTEST(TARN::storedBits(stored, width), "bits");
}

void TestPortBits::enteredValuesNeedNoMoreBitsThanThePort_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("bits");
    QTest::newRow("fits") << "0x5A" << 8 << "01011010";
    QTest::newRow("zeros in front do not count") << "0x1F" << 5 << "11111";
    QTest::newRow("one bit too many") << "0x20" << 5 << QString();
    QTest::newRow("zero") << "0x00" << 5 << "00000";
    QTest::newRow("zero for no signals") << "0x0" << 0 << "";
    QTest::newRow("one for no signals") << "0x1" << 0 << QString();
    QTest::newRow("few digits") << "0x3" << 8 << "00000011";
    QTest::newRow("no digits") << "0xz" << 3 << "000";
}

void TestPortBits::enteredValuesNeedNoMoreBitsThanThePort()
{
    QFETCH(QString, value);
    QFETCH(int, width);
    QFETCH(QString, bits);
    const std::optional<QString> entered = TARN::enteredBits(value, width);
    QCOMPARE(entered.has_value(), !bits.isNull());
    QCOMPARE(entered.value_or(QString()), bits);
}

void TestPortBits::anyTextIsMaskedAsByTheLine()
{
    const quint32 seed = TarnTest::setting("TARN_TEST_SEED", 1);
    const quint32 rounds = TarnTest::setting("TARN_TEST_ROUNDS", 2000);
    QRandomGenerator random(seed);
    const QString alphabet =
        QStringLiteral("0000xxX123789abcdefABCDEFgzGZ >;[].-_\n\t\u0663\u00b2\u00e9\u2177\u4e2d");
    TARN::InitialValueLine line(0, nullptr);
    for (quint32 i = 0; i < rounds; ++i) {
        QString text = random.bounded(3) ? QStringLiteral("0x") : QString();
        for (int length = random.bounded(12); length > 0; --length)
            text += alphabet.at(random.bounded(alphabet.size()));
        const int width = random.bounded(30);
        line.updateValidatorForWidth(width);
        line.setText(text);
        const QByteArray what =
            QStringLiteral("seed %1, '%2', width %3").arg(seed).arg(text).arg(width).toUtf8();
        QVERIFY2(TARN::maskedValue(text, width) == line.displayText(), what);
    }
}

TARN_TEST_MAIN(TestPortBits)

#include "tst_portbits.moc"
