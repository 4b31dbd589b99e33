// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "indexrange.h"

#include <pugixml.hpp>

#include <optional>
#include <string>

namespace NETWEIR::Internal {

class IndexEvaluator;

/// A selection from a variable or from a part of it, with all that its expressions tell.
struct Selection
{
    enum class Kind { Element, Slice, Bits, Member };

    Kind kind = Kind::Bits;
    /// The element, the lowest element of a slice, or the lowest bit. Elements are counted from the
    /// lowest index on.
    IndexRange index;
    std::optional<qint64> count; ///< Elements of a slice, or bits; none when it is not known.
    std::string member;          ///< Name of the member.
};

/// What the element @p step selects. The names in it belong to @p scope.
Selection selectionOf(const pugi::xml_node &step, int scope, const IndexEvaluator &indexes);

} // namespace NETWEIR::Internal
