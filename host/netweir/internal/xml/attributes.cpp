// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "attributes.h"

#include <QByteArray>

#include <algorithm>
#include <charconv>

namespace NETWEIR::Internal {

namespace {

/// Decodes the character at the beginning of @p text, which is not empty, and returns the length of
/// its encoding.
std::size_t decodeCharacter(std::string_view text, char *decoded)
{
    struct Escape
    {
        std::string_view text;
        char character;
    };
    static constexpr Escape Escapes[] = {{"__BRA__", '['}, {"__KET__", ']'}, {"__DOT__", '.'}};

    if (startsWith(text, "__0") && text.size() >= 5) {
        unsigned value = 0;
        const char *end = text.data() + 5;
        const auto result = std::from_chars(text.data() + 3, end, value, 16);
        if (result.ec == std::errc() && result.ptr == end) {
            *decoded = char(value);
            return 5;
        }
    }
    for (const Escape &escape : Escapes) {
        if (startsWith(text, escape.text)) {
            *decoded = escape.character;
            return escape.text.size();
        }
    }
    *decoded = text.front();
    return 1;
}

} // namespace

int pinPosition(std::string_view pinName)
{
    int position = 0;
    if (startsWith(pinName, PinNumber)) {
        pinName.remove_prefix(PinNumber.size());
        std::from_chars(pinName.data(), pinName.data() + pinName.size(), position);
    }
    return position;
}

QString decodedName(std::string_view encoded)
{
    QByteArray name;
    name.reserve(int(encoded.size()));
    while (!encoded.empty()) {
        char character = 0;
        encoded.remove_prefix(decodeCharacter(encoded, &character));
        name.append(character);
    }
    return QString::fromUtf8(name);
}

bool hidesSteps(QStringView identifier)
{
    return std::any_of(identifier.begin(), identifier.end(), [](QChar letter) {
        return letter == QLatin1Char('.') || letter == QLatin1Char('[');
    });
}

std::vector<int> plainIdentifiers(const QString &name)
{
    std::vector<int> lengths;
    for (int begin = 0, end = 0; begin < name.size(); begin = end + 1) {
        end = name.indexOf(QLatin1Char('.'), begin);
        end = end < 0 ? name.size() : end;
        const int bracket = name.indexOf(QLatin1Char('['), begin);
        lengths.push_back((bracket < 0 ? end : qMin(bracket, end)) - begin);
    }
    return lengths;
}

std::optional<qint64> constantValue(const pugi::xml_node &constant)
{
    std::string_view text = attribute(constant, "name");
    int width = 0;
    const auto widthEnd = std::from_chars(text.data(), text.data() + text.size(), width);
    if (widthEnd.ec != std::errc())
        return std::nullopt;
    text.remove_prefix(std::size_t(widthEnd.ptr - text.data()));
    if (!startsWith(text, "'"))
        return std::nullopt;
    text.remove_prefix(1);
    const bool isSigned = startsWith(text, "s");
    if (isSigned)
        text.remove_prefix(1);
    if (!startsWith(text, "h"))
        return std::nullopt;
    text.remove_prefix(1);

    quint64 value = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), value, 16);
    if (end.ec != std::errc() || end.ptr != text.data() + text.size() || value >> 62)
        return std::nullopt;
    if (isSigned && width > 0 && width < 62 && (value >> (width - 1)) & 1)
        return qint64(value) - (qint64(1) << width);
    return qint64(value);
}

std::optional<int> rangeBound(const pugi::xml_node &constant)
{
    if (const auto value = constantValue(constant))
        return int(qint32(quint32(*value)));
    return std::nullopt;
}

std::optional<std::pair<int, int>> declaredRange(const pugi::xml_node &node)
{
    const pugi::xml_node first = node.child("range").first_child();
    const auto left = rangeBound(first);
    const auto right = rangeBound(first.next_sibling());
    if (!left || !right)
        return std::nullopt;
    return std::make_pair(*left, *right);
}

} // namespace NETWEIR::Internal
