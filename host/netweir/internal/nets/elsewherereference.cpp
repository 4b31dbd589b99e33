// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "elsewherereference.h"

#include <netweir/internal/xml/reference.h>

namespace NETWEIR::Internal {

ElsewhereReference elsewhere(const Reference &reference, const IndexEvaluator &indexes)
{
    ElsewhereReference result;
    result.scope = reference.scope;
    result.path = reference.path();
    result.name = reference.name();
    for (const pugi::xml_node &step : reference.steps)
        result.selections.push_back(selectionOf(step, reference.scope, indexes));
    return result;
}

} // namespace NETWEIR::Internal
