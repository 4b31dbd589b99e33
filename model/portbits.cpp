// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "portbits.h"

#include "bitstring.h"

namespace TARN {

namespace {

constexpr int PrefixLength = 2; // "0x"

/// The characters that the mask of an initial value takes, see QLineEdit::inputMask: "N" for the
/// prefix and "H" for the digits.
bool fitsMask(QChar c, int position)
{
    if (position < PrefixLength)
        return c.isLetterOrNumber();
    return c.isNumber() || (c >= QLatin1Char('a') && c <= QLatin1Char('f')) ||
           (c >= QLatin1Char('A') && c <= QLatin1Char('F'));
}

} // namespace

QString fittedBits(const QString &bits, int previous, int width)
{
    if (previous == 0)
        previous = qMin(bits.size(), width);
    const QString counting = bits.right(previous);
    if (previous >= width)
        return counting.left(width);
    return counting + QString(width - previous, QLatin1Char('0'));
}

QString takeBits(QString &bits, int width)
{
    const QString taken = width > bits.size() ? QString(width, QLatin1Char('0')) : bits.left(width);
    bits.remove(0, width);
    return taken;
}

int valueDigits(int width)
{
    return qMax(1, (width + 3) / 4);
}

QString valueText(const QString &bits)
{
    return QStringLiteral("0x") + (bits.isEmpty() ? QStringLiteral("0") : stringBintoHex(bits));
}

QString maskedValue(const QString &text, int width)
{
    const int length = PrefixLength + valueDigits(width);
    QString masked;
    for (int i = 0; i < text.size() && masked.size() < length; ++i) {
        if (fitsMask(text.at(i), masked.size()))
            masked += masked.size() < PrefixLength ? text.at(i) : text.at(i).toUpper();
    }
    return masked.leftJustified(length, QLatin1Char('0'));
}

QString storedBits(const QString &stored, int width)
{
    // As for a new port: the width for which the value was given is not known.
    return fittedBits(stringHextoBinfor0x(maskedValue(stored, width)), 0, width);
}

std::optional<QString> enteredBits(const QString &value, int width)
{
    QString bits = stringHextoBinfor0x(value);
    const int firstOne = bits.indexOf(QLatin1Char('1'));
    if (firstOne == -1) // Zero, or no digits at all.
        return QString(width, QLatin1Char('0'));
    bits.remove(0, firstOne);
    if (bits.size() > width)
        return std::nullopt;
    return QString(width - bits.size(), QLatin1Char('0')) + bits;
}

} // namespace TARN
