// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <pugixml.hpp>

#include <optional>
#include <string_view>

namespace NETWEIR::Internal {

/// Begins the names of positional pins, and of ports whose entry in the list is empty.
constexpr std::string_view PinNumber = "__pinNumber";

/// The user's spelling of a name in the elaborator's own encoding: "a__02fb" is "a/b",
/// "g__BRA__0__KET__" is "g[0]".
QString decodedName(std::string_view encoded);

/// The value of a "const" element such as 32'sh8; nothing when it has unknown bits, is no integer
/// or does not fit.
std::optional<qint64> constantValue(const pugi::xml_node &constant);

/// The value of a constant that stands for an index in a declared range, which is a 32-bit number
/// with sign whatever its text says.
std::optional<int> rangeBound(const pugi::xml_node &constant);

/// Both bounds of the "range" child of @p node, left then right.
std::optional<std::pair<int, int>> declaredRange(const pugi::xml_node &node);

/// Shorthand for the text of an attribute, empty when it is missing. Lives as long as the document.
inline std::string_view attribute(const pugi::xml_node &node, const char *name)
{
    return node.attribute(name).value();
}

inline bool is(const pugi::xml_node &node, std::string_view tag)
{
    return tag == node.name();
}

inline bool startsWith(std::string_view text, std::string_view beginning)
{
    return text.substr(0, beginning.size()) == beginning;
}

inline QString toQString(std::string_view text)
{
    return QString::fromUtf8(text.data(), int(text.size()));
}

} // namespace NETWEIR::Internal
