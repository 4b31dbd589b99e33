// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "vhdlliteral.h"

#include <QSet>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

constexpr int IntegerWidth = 32;
constexpr int CharacterWidth = 8;

bool isInteger(const QByteArray &type)
{
    return type == "integer" || type == "natural" || type == "positive";
}

bool isBit(const QByteArray &type)
{
    return type == "bit" || type == "std_logic" || type == "std_ulogic";
}

bool isOfTwoValues(const QByteArray &type)
{
    return type == "bit" || type == "bit_vector";
}

/// The two's complement of a number, in 32 bits or, if it does not fit, in 64.
QByteArray bitsOf(qint64 number)
{
    const qint64 limit = qint64(1) << (IntegerWidth - 1);
    const int width = number >= -limit && number < limit ? IntegerWidth : 2 * IntegerWidth;
    QByteArray bits(width, '0');
    for (int i = 0; i < width; ++i)
        bits[width - 1 - i] = char('0' + (number >> i & 1));
    return bits;
}

/// The letters 0, 1, X and Z. Null when the value has no bits.
QByteArray bitsOf(const GenericValue &value)
{
    bool isNumber = false;
    switch (value.kind) {
    case GenericValue::Bits:
        return value.text.toUpper().toLatin1();
    case GenericValue::Boolean:
        return value.text == QLatin1String("true") ? "1" : "0";
    case GenericValue::Integer: {
        const qint64 number = value.text.toLongLong(&isNumber);
        return isNumber ? bitsOf(number) : QByteArray();
    }
    case GenericValue::Text: {
        QByteArray bits;
        for (const char c : value.text.toLatin1())
            bits += bitsOf(qint64(static_cast<unsigned char>(c))).right(CharacterWidth);
        return bits;
    }
    case GenericValue::Real:
        break;
    }
    return {};
}

bool isKnown(const QByteArray &bits)
{
    return !bits.isEmpty() &&
           std::all_of(bits.begin(), bits.end(), [](char bit) { return bit == '0' || bit == '1'; });
}

QByteArray integerText(const GenericValue &value)
{
    if (value.kind == GenericValue::Integer)
        return value.text.toLatin1();
    const QByteArray bits = bitsOf(value);
    if (!isKnown(bits))
        return {};
    const int first = qMax(0, bits.indexOf('1'));
    const QByteArray significant = bits.mid(first);
    if (significant.size() > IntegerWidth)
        return {};
    qint64 number = significant.toLongLong(nullptr, 2);
    if (significant.size() == IntegerWidth)
        number -= qint64(1) << IntegerWidth; // Verilog's negative numbers without a sign.
    return QByteArray::number(number);
}

QByteArray realText(const GenericValue &value)
{
    if (value.kind == GenericValue::Integer)
        return value.text.toLatin1() + ".0";
    if (value.kind != GenericValue::Real)
        return {};
    QByteArray text = value.text.toLatin1();
    if (!text.contains('.')) {
        const int exponent = text.toLower().indexOf('e');
        text.insert(exponent < 0 ? text.size() : exponent, ".0");
    }
    return text;
}

QByteArray stringText(const GenericValue &value)
{
    QByteArray characters = value.text.toLatin1();
    if (value.kind == GenericValue::Bits) {
        const QByteArray bits = bitsOf(value);
        if (!isKnown(bits) || bits.size() % CharacterWidth != 0)
            return {};
        characters.clear();
        for (int i = 0; i < bits.size(); i += CharacterWidth)
            characters += char(bits.mid(i, CharacterWidth).toInt(nullptr, 2));
    } else if (value.kind != GenericValue::Text) {
        return {};
    }
    QByteArray text = "\"";
    for (const char c : qAsConst(characters)) {
        const auto code = static_cast<unsigned char>(c);
        const bool isGraphic = (code >= ' ' && code < 0x7f) || code >= 0xa0;
        if (c == '"')
            text += "\"\"";
        else if (isGraphic)
            text += c;
        else
            text += "\" & character'val(" + QByteArray::number(code) + ") & \"";
    }
    return text + '"';
}

} // namespace

bool isBitVector(const QByteArray &baseType)
{
    static const QSet<QByteArray> types{"std_logic_vector", "std_ulogic_vector", "unsigned",
                                        "signed",           "u_unsigned",        "u_signed",
                                        "bit_vector"};
    return types.contains(baseType);
}

bool isConnectable(const QByteArray &baseType)
{
    return isBitVector(baseType) || isBit(baseType) || isInteger(baseType) || baseType == "boolean";
}

QByteArray vhdlLiteral(const GenericValue &value, const QByteArray &baseType)
{
    if (isInteger(baseType))
        return integerText(value);
    if (baseType == "real")
        return realText(value);
    if (baseType == "string")
        return stringText(value);
    const QByteArray bits = bitsOf(value);
    if (bits.isEmpty() && !(isBitVector(baseType) && value.kind == GenericValue::Text))
        return {};
    if (baseType == "boolean")
        return isKnown(bits) ? QByteArray(bits.contains('1') ? "true" : "false") : QByteArray();
    if (isOfTwoValues(baseType) && !isKnown(bits))
        return {};
    if (isBit(baseType))
        return isKnown(bits.chopped(1) + '0') && !bits.chopped(1).contains('1')
                   ? '\'' + bits.right(1) + '\''
                   : QByteArray();
    return isBitVector(baseType) ? '"' + bits + '"' : QByteArray();
}

} // namespace NETWEIR::Internal
