// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "pinexpression.h"

#include "attributes.h"

#include <netweir/internal/ground/readguard.h>

#include <vector>

namespace NETWEIR::Internal {

namespace {

/// A selection that the elaborator adds has the location of its operand; a selection in the source
/// has that of its bracket or dot.
bool isAddedSelection(const pugi::xml_node &expression)
{
    return is(expression, "sel") &&
           attribute(expression, "loc") == attribute(expression.first_child(), "loc");
}

/// @p expression without its constant selections; null when another selection comes up.
pugi::xml_node selectedFrom(pugi::xml_node expression)
{
    while (true) {
        ReadGuard::check();
        const bool isIndexed =
            is(expression, "sel") || is(expression, "arraysel") || is(expression, "slicesel");
        if (!isIndexed && !is(expression, "structsel"))
            return expression;
        if (isIndexed && !is(expression.first_child().next_sibling(), "const"))
            return {};
        expression = expression.first_child();
    }
}

} // namespace

pugi::xml_node connectedPart(pugi::xml_node expression)
{
    while (is(expression, "extend") || is(expression, "extends") || isAddedSelection(expression)) {
        ReadGuard::check();
        expression = expression.first_child();
    }
    return expression;
}

bool isConnectable(const pugi::xml_node &expression)
{
    std::vector<pugi::xml_node> pending{expression};
    while (!pending.empty()) {
        ReadGuard::check();
        const pugi::xml_node outer = pending.back();
        pending.pop_back();
        const pugi::xml_node part = selectedFrom(is(outer, "extend") ? outer.first_child() : outer);
        if (is(part, "concat")) {
            pending.push_back(part.first_child());
            pending.push_back(part.last_child());
        } else if (!is(part, "varref") && !is(part, "varxref")) {
            return false;
        }
    }
    return true;
}

bool isSelectionOfParts(pugi::xml_node expression)
{
    if (!is(expression, "sel"))
        return false;
    while (is(expression, "sel"))
        expression = expression.first_child();
    return is(expression, "concat");
}

} // namespace NETWEIR::Internal
