// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "genericline.h"

#include "vhdltext.h"

namespace NETWEIR::Internal {

namespace {

constexpr std::string_view Mark = "(report note): netweir-generic:";

/// The letters of Verilog for those of std_ulogic.
QString bitsOf(std::string_view letters)
{
    QString bits;
    for (const char letter : letters) {
        switch (letter) {
        case '0':
        case 'L':
            bits += QLatin1Char('0');
            break;
        case '1':
        case 'H':
            bits += QLatin1Char('1');
            break;
        case 'Z':
            bits += QLatin1Char('z');
            break;
        default:
            bits += QLatin1Char('x');
        }
    }
    return bits;
}

QString textOf(std::string_view codes)
{
    QByteArray letters;
    int code = 0;
    bool hasDigits = false;
    for (const char letter : codes) {
        if (letter >= '0' && letter <= '9') {
            code = (code * 10 + (letter - '0')) & 0xFF;
            hasDigits = true;
        } else if (hasDigits) {
            letters += char(code);
            code = 0;
            hasDigits = false;
        }
    }
    if (hasDigits)
        letters += char(code);
    return vhdlText(letters);
}

GenericValue valueOf(char kind, std::string_view text)
{
    switch (kind) {
    case 'r':
        return {GenericValue::Real, vhdlText(text)};
    case 'b':
        return {GenericValue::Bits, bitsOf(text)};
    case 'o':
        return {GenericValue::Boolean, vhdlText(text)};
    case 't':
        return {GenericValue::Text, textOf(text)};
    default:
        return {GenericValue::Integer, vhdlText(text)};
    }
}

} // namespace

bool parseGenericLine(std::string_view line, GenericLine *result)
{
    const std::size_t mark = line.find(Mark);
    if (mark == std::string_view::npos)
        return false;
    line.remove_prefix(mark + Mark.size());
    const std::size_t value = line.rfind('|');
    if (value == std::string_view::npos || value < 3 || line[value - 2] != '|')
        return false;
    const std::size_t end = line.find(":|"); // A name may contain '|' too.
    if (end == std::string_view::npos || end + 2 > value - 2)
        return false;
    result->instance = line.substr(0, end + 1);
    result->name = vhdlText(line.substr(end + 2, value - 2 - (end + 2)));
    result->value = valueOf(line[value - 1], line.substr(value + 1));
    return true;
}

} // namespace NETWEIR::Internal
