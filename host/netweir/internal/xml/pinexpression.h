// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <pugixml.hpp>

namespace NETWEIR::Internal {

/// The expression that the user connected to a pin, without the elaborator's adaptation to the
/// width of the pin.
pugi::xml_node connectedPart(pugi::xml_node expression);

/// True for an expression that can be connected to a port of any direction: variables, parts with
/// constant selections, and concatenations of these.
bool isConnectable(const pugi::xml_node &expression);

/// A part select of a concatenation, which occurs only with different widths.
bool isSelectionOfParts(pugi::xml_node expression);

} // namespace NETWEIR::Internal
