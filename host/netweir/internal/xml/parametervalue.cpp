// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "parametervalue.h"

#include "attributes.h"
#include "readoptions.h"
#include "sourcetexts.h"
#include "typetable.h"

#include <netweir/internal/ground/itemat.h>

namespace NETWEIR::Internal {

namespace {

/// A number such as 8'sh1f or 4'b10x0.
struct Number
{
    qint64 width = 0;
    bool isHex = false;
    QByteArray digits;
};

std::optional<Number> numberIn(const QByteArray &text)
{
    const int tick = text.indexOf('\'');
    Number number;
    number.width = text.left(qMax(tick, 0)).toLongLong();
    QByteArray rest = text.mid(tick + 1);
    if (rest.startsWith('s'))
        rest.remove(0, 1);
    number.isHex = rest.startsWith('h');
    number.digits = rest.mid(1);
    if (tick <= 0 || number.width <= 0 || (!number.isHex && !rest.startsWith('b')))
        return std::nullopt;
    return number;
}

/// The letters of all bits, leftmost first.
QString bitsOf(const Number &number)
{
    QString bits;
    for (const char digit : number.digits) {
        if (number.isHex)
            bits += QString::number(QByteArray(1, digit).toInt(nullptr, 16) | 16, 2).mid(1);
        else
            bits += QLatin1Char(digit);
    }
    return bits.rightJustified(int(number.width), QLatin1Char('0')).right(int(number.width));
}

/// Zeros on the left only fill up.
QString charactersOf(const Number &number)
{
    const QByteArray even = number.digits.size() % 2 ? '0' + number.digits : number.digits;
    QByteArray characters = QByteArray::fromHex(even);
    while (characters.startsWith('\0'))
        characters.remove(0, 1);
    return QString::fromLatin1(characters);
}

QString realText(QByteArray text)
{
    if (!text.contains('.')) {
        const int exponent = text.indexOf('e');
        text.insert(exponent < 0 ? text.size() : exponent, ".0");
    }
    return QString::fromLatin1(text);
}

} // namespace

std::optional<GenericValue> parameterValue(const pugi::xml_node &parameter, const TypeTable &types,
                                           const SourceTexts &sources)
{
    const pugi::xml_node constant = parameter.child("const");
    const std::string_view written = attribute(constant, "name");
    const QByteArray text(written.data(), int(written.size()));
    if (text.isEmpty())
        return std::nullopt;
    if (text.startsWith('"'))
        return GenericValue{GenericValue::Text, QString::fromUtf8(text.mid(1, text.size() - 2))};
    const std::optional<Number> number = numberIn(text);
    if (!number && text.contains('\''))
        return std::nullopt;
    if (!number)
        return GenericValue{GenericValue::Real, realText(text)};
    const bool isString = sources.textAt(attribute(constant, "loc")).startsWith('"');
    if (number->isHex && charactersOf(*number) == QLatin1String(UnsetParameter))
        return std::nullopt;
    if (number->isHex && isString)
        return GenericValue{GenericValue::Text, charactersOf(*number)};
    constexpr int IntegerWidth = 32;
    const DataType &type = types.at(types.typeOf(parameter));
    if (number->isHex && number->width == IntegerWidth && type.isSigned)
        return GenericValue{GenericValue::Integer,
                            QString::number(qint32(number->digits.toUInt(nullptr, 16)))};
    return GenericValue{GenericValue::Bits, bitsOf(*number)};
}

} // namespace NETWEIR::Internal
