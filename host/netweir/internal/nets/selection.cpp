// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "selection.h"

#include "indexevaluator.h"

#include <netweir/internal/xml/attributes.h>

namespace NETWEIR::Internal {

Selection selectionOf(const pugi::xml_node &step, int scope, const IndexEvaluator &indexes)
{
    const pugi::xml_node index = step.first_child().next_sibling();
    if (is(step, "arraysel"))
        return {Selection::Kind::Element, indexes.valuesOf(index, scope), {}, {}};
    if (is(step, "structsel"))
        return {Selection::Kind::Member, {}, {}, std::string(attribute(step, "name"))};
    const std::optional<qint64> count = constantValue(index.next_sibling());
    if (is(step, "sel"))
        return {Selection::Kind::Bits, indexes.valuesOf(index, scope), count, {}};
    return {
        Selection::Kind::Slice, IndexRange::single(constantValue(index).value_or(-1)), count, {}};
}

} // namespace NETWEIR::Internal
