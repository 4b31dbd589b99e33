// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "verilogvalue.h"

#include <netweir/internal/parts/partroot.h>

namespace NETWEIR::Internal {

namespace {

/// Characters other than printable ones of ASCII as octal numbers.
QByteArray stringLiteral(const QString &text)
{
    QByteArray result("\"");
    for (const char character : text.toLatin1()) {
        const bool isPrintable = character >= ' ' && character <= '~';
        if (isPrintable && character != '"' && character != '\\')
            result += character;
        else
            result += '\\' + QByteArray::number(uchar(character), 8).rightJustified(3, '0');
    }
    return result + '"';
}

/// A minus sign belongs in front of the width. A wider number than an integer of Verilog has keeps
/// its bits.
QByteArray integerLiteral(const QString &text)
{
    const bool isNegative = text.startsWith(QLatin1Char('-'));
    const QByteArray digits = text.mid(isNegative ? 1 : 0).toLatin1();
    constexpr qulonglong Largest = qulonglong(1) << 31;
    const QByteArray base = digits.toULongLong() > Largest ? "64'sd" : "32'sd";
    return (isNegative ? "-" : "") + base + digits;
}

} // namespace

QByteArray verilogLiteral(const GenericValue &value)
{
    switch (value.kind) {
    case GenericValue::Integer:
        return integerLiteral(value.text);
    case GenericValue::Real:
        return value.text.toLatin1();
    case GenericValue::Bits:
        return QByteArray::number(value.text.size()) + "'b" + value.text.toLatin1();
    case GenericValue::Text:
        return stringLiteral(value.text);
    case GenericValue::Boolean:
        return value.text == QLatin1String("true") ? "1'b1" : "1'b0";
    }
    return {};
}

} // namespace NETWEIR::Internal
