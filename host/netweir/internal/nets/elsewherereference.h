// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "selection.h"

#include <string>
#include <vector>

namespace NETWEIR::Internal {

struct Reference;

/// A reference of a definition to a net of another node. Which net it is depends on the instance,
/// so the reference outlives its elements.
struct ElsewhereReference
{
    int scope = 0;    ///< In the definition that has the reference.
    std::string path; ///< The names before that of the net, joined with '.'.
    std::string name;
    std::vector<Selection> selections; ///< Innermost first.
};

/// All that @p reference tells.
ElsewhereReference elsewhere(const Reference &reference, const IndexEvaluator &indexes);

} // namespace NETWEIR::Internal
