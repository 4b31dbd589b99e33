// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <pugixml.hpp>

#include <QtGlobal>

namespace NETWEIR::Internal {

class SourceTexts;
class TypeTable;

/// The bits of @p expression, which is connected to a pin that is wider than it. The elaborator
/// widens the operands to the pin, not only the result. 0 when the width is not known: for a number
/// or parameter without a width in the source.
qint64 connectedWidth(const pugi::xml_node &expression, const TypeTable &types,
                      const SourceTexts &sources);

} // namespace NETWEIR::Internal
