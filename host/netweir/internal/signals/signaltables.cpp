// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "signaltables.h"

#include <algorithm>
#include <initializer_list>
#include <limits>

namespace NETWEIR::Internal {

namespace {

int digitOf(char letter)
{
    if (letter >= '0' && letter <= '9')
        return letter - '0';
    return letter >= 'A' && letter <= 'F' ? letter - 'A' + 10 : -1;
}

/// The pointer at the beginning of @p text; 0 when there is none.
quint64 pointerAt(std::string_view text)
{
    constexpr std::size_t MostDigits = 16;
    quint64 value = 0;
    std::size_t digits = 0;
    for (; digits < text.size() && digitOf(text[digits]) >= 0; ++digits)
        value = value << 4 | quint64(digitOf(text[digits]));
    return digits <= MostDigits ? value : 0;
}

/// What follows @p key in @p text; empty when it does not occur.
std::string_view after(std::string_view text, std::string_view key)
{
    const std::size_t begin = text.find(key);
    return begin == std::string_view::npos ? std::string_view() : text.substr(begin + key.size());
}

/// The decimal number at the beginning of @p text; 0 when there is none.
int numberAt(std::string_view text)
{
    constexpr int Largest = std::numeric_limits<int>::max() / 10 - 1;
    int value = 0;
    for (std::size_t i = 0; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i)
        value = std::min(value, Largest) * 10 + (text[i] - '0');
    return value;
}

bool endsWith(std::string_view text, std::string_view end)
{
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

} // namespace

bool isImplicitSignal(std::string_view path)
{
    for (const std::string_view name :
         {". 'stable", ". 'quiet", ". 'transaction", ". 'delayed", ".guard"}) {
        if (endsWith(path, name))
            return true;
    }
    return false;
}

/// A path may contain anything, so the line is read from its end.
bool parseMapLine(std::string_view line, MapLine *result)
{
    const std::size_t net = line.rfind(" net: ");
    if (line.empty() || line.front() != '.' || net == std::string_view::npos)
        return false;
    const std::size_t space = line.rfind(' ', net - 1);
    if (space == std::string_view::npos || space == 0 || line[space - 1] != ':')
        return false;
    result->path = line.substr(0, space - 1);
    result->pointer = pointerAt(line.substr(space + 1, net - space - 1));
    return result->pointer != 0;
}

bool parseTableLine(std::string_view line, TableLine *result)
{
    const std::size_t colon = line.find(": ");
    const std::string_view mode = after(line, " smode: ");
    if (colon == 0 || colon == std::string_view::npos || mode.empty() ||
        line.find_first_not_of("0123456789") != colon)
        return false;
    result->pointer = pointerAt(line.substr(colon + 2));
    result->isConversion = mode.substr(0, 7) == "conv_in";
    const int ports = numberAt(after(mode, " #prt: "));
    result->drivers =
        std::min(ports, std::numeric_limits<int>::max() / 2) +
        std::min(numberAt(after(mode, " #drv: ")), std::numeric_limits<int>::max() / 2);
    result->source = pointerAt(after(mode, " eff: "));
    return result->pointer != 0;
}

} // namespace NETWEIR::Internal
