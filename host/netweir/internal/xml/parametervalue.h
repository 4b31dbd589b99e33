// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/parts/partroot.h>

#include <pugixml.hpp>

#include <optional>

namespace NETWEIR::Internal {

class SourceTexts;
class TypeTable;

/// The value of a parameter in the stub of a foreign unit, for instances that set it. Nothing for a
/// parameter that is not set, or that has no known value.
///
/// Signed numbers of 32 bits are integers. In the XML a string is a number; it is text only when
/// the value stands as a string in the source.
std::optional<GenericValue> parameterValue(const pugi::xml_node &parameter, const TypeTable &types,
                                           const SourceTexts &sources);

} // namespace NETWEIR::Internal
