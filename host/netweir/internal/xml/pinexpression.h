// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <pugixml.hpp>

namespace NETWEIR::Internal {

/// What a user connected to a pin, without what fits it to the width of the pin.
pugi::xml_node connectedPart(pugi::xml_node expression);

/// True for what a port of any direction can be connected to: variables, parts of them that
/// constants select, concatenations of these.
bool isConnectable(const pugi::xml_node &expression);

/// A part select of a concatenation, which only widths that do not match lead to.
bool isSelectionOfParts(pugi::xml_node expression);

} // namespace NETWEIR::Internal
