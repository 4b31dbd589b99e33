// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <model/bitstring.h>
#include <support/testcase.h>

#include <QApplication>
#include <QTest>

class TestBitString : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void bitsBecomeUpperCaseDigits_data();
    void bitsBecomeUpperCaseDigits();
    void digitsBecomeFourBitsEach_data();
    void digitsBecomeFourBitsEach();
    void everyDigitComesBack();
    void longValuesComeBack();
};

void TestBitString::bitsBecomeUpperCaseDigits_data()
{
    QTest::addColumn<QString>("bits");
    QTest::addColumn<QString>("hex");
    QTest::newRow("nothing") << ""
                             << "";
    QTest::newRow("one zero") << "0"
                              << "0";
    QTest::newRow("one bit") << "1"
                             << "1";
    QTest::newRow("three bits") << "110"
                                << "6";
    QTest::newRow("whole digit") << "1010"
                                 << "A";
    QTest::newRow("leading partial digit") << "11110"
                                           << "1E";
    QTest::newRow("leading zero digit stays") << "00001111"
                                              << "0F";
    QTest::newRow("partial digit of zeros stays") << "00000"
                                                  << "00";
    QTest::newRow("wider than a machine word")
        << "1" + QString(64, QLatin1Char('0')) << "10000000000000000";
    QTest::newRow("no bit string") << "10x1"
                                   << "";
    QTest::newRow("digit of another script") << QString(QChar(0x0661)) << "";
}

void TestBitString::bitsBecomeUpperCaseDigits()
{
    QFETCH(QString, bits);
    QFETCH(QString, hex);
    QCOMPARE(TARN::stringBintoHex(bits), hex);
}

void TestBitString::digitsBecomeFourBitsEach_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("bits");
    QTest::newRow("nothing") << ""
                             << "";
    QTest::newRow("prefix only") << "0x"
                                 << "";
    QTest::newRow("one digit") << "0x5"
                               << "0101";
    QTest::newRow("leading zeros stay") << "0x01"
                                        << "00000001";
    QTest::newRow("upper case") << "0xAF"
                                << "10101111";
    QTest::newRow("lower case") << "0xaf"
                                << "10101111";
    QTest::newRow("upper-case prefix") << "0XF"
                                       << "1111";
    QTest::newRow("no prefix") << "1E"
                               << "00011110";
    QTest::newRow("no prefix, leading zero") << "0F"
                                             << "00001111";
    QTest::newRow("no digit") << "0xG"
                              << "";
    QTest::newRow("no digit among digits") << "0x12Z4"
                                           << "";
    QTest::newRow("second prefix") << "0x0x1"
                                   << "";
    QTest::newRow("blank") << "0x 1"
                           << "";
    QTest::newRow("sign") << "-1"
                          << "";
    QTest::newRow("digit of another script") << QString(QChar(0x0661)) << "";
}

void TestBitString::digitsBecomeFourBitsEach()
{
    QFETCH(QString, text);
    QFETCH(QString, bits);
    QCOMPARE(TARN::stringHextoBinfor0x(text), bits);
}

void TestBitString::everyDigitComesBack()
{
    const QString digits = QStringLiteral("0123456789ABCDEF");
    QCOMPARE(TARN::stringBintoHex(TARN::stringHextoBinfor0x(digits)), digits);
    QCOMPARE(TARN::stringHextoBinfor0x(digits),
             QStringLiteral("0000000100100011010001010110011110001001101010111100110111101111"));
}

void TestBitString::longValuesComeBack()
{
    const QString digits = QStringLiteral("C5").repeated(100000);
    QCOMPARE(TARN::stringBintoHex(TARN::stringHextoBinfor0x(QStringLiteral("0x") + digits)),
             digits);
}

TARN_TEST_MAIN(TestBitString)
#include "tst_bitstring.moc"
