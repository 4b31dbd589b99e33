// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringView>

#include <pugixml.hpp>

#include <optional>
#include <string_view>
#include <vector>

namespace NETWEIR::Internal {

/// Prefix for the names of positional pins and of ports with an empty entry in the port list.
constexpr std::string_view PinNumber = "__pinNumber";

/// The position in the name of a positional pin, counted from 1; 0 for the name of a port.
int pinPosition(std::string_view pinName);

/// The user's spelling of a name in the elaborator's own encoding: "a__02fb" is "a/b",
/// "g__BRA__0__KET__" is "g[0]".
QString decodedName(std::string_view encoded);

/// A name with @p identifier looks as if it had more steps: it has a point or a bracket in it.
bool hidesSteps(QStringView identifier);

/// The lengths of the identifiers in @p name, none of which has a point or a bracket in it.
std::vector<int> plainIdentifiers(const QString &name);

/// The value of a "const" element such as 32'sh8; none when it has unknown bits, is not an integer
/// or does not fit.
std::optional<qint64> constantValue(const pugi::xml_node &constant);

/// The value of a constant index in a declared range, which is a signed 32-bit number regardless of
/// its text.
std::optional<int> rangeBound(const pugi::xml_node &constant);

/// The left and the right bound of the "range" child of @p node.
std::optional<std::pair<int, int>> declaredRange(const pugi::xml_node &node);

/// The text of an attribute, empty when it is missing. Valid as long as the document.
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
