// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "bitstring.h"

namespace TARN {

namespace {

constexpr int BitsPerDigit = 4;
constexpr char Digits[] = "0123456789ABCDEF";

/// Value of a hexadecimal digit of either case, -1 for another character.
int digitValue(QChar digit)
{
    const ushort code = digit.unicode();
    if (code >= '0' && code <= '9')
        return code - '0';
    if (code >= 'A' && code <= 'F')
        return code - 'A' + 10;
    if (code >= 'a' && code <= 'f')
        return code - 'a' + 10;
    return -1;
}

} // namespace

QString stringBintoHex(QString bits)
{
    QString hex;
    hex.reserve(bits.size() / BitsPerDigit + 1);
    int value = 0;
    int missing = bits.size();
    for (const QChar bit : qAsConst(bits)) {
        if (bit != QLatin1Char('0') && bit != QLatin1Char('1'))
            return QString();
        value = value * 2 + (bit == QLatin1Char('1') ? 1 : 0);
        if (--missing % BitsPerDigit == 0) {
            hex.append(QLatin1Char(Digits[value]));
            value = 0;
        }
    }
    return hex;
}

QString stringHextoBinfor0x(QString text) // NOLINT(performance-*): by value in the interface
{
    if (text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive))
        text.remove(0, 2);
    QString bits;
    bits.reserve(text.size() * BitsPerDigit);
    for (const QChar digit : qAsConst(text)) {
        const int value = digitValue(digit);
        if (value < 0)
            return QString();
        for (int weight = 1 << (BitsPerDigit - 1); weight > 0; weight >>= 1)
            bits.append(QLatin1Char(value & weight ? '1' : '0'));
    }
    return bits;
}

} // namespace TARN
