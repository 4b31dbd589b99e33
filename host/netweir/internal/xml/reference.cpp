// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "reference.h"

#include "attributes.h"

#include <netweir/internal/ground/readguard.h>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

bool isSelection(const pugi::xml_node &node)
{
    return is(node, "sel") || is(node, "arraysel") || is(node, "structsel") || is(node, "slicesel");
}

bool isReference(const pugi::xml_node &node)
{
    return is(node, "varref") || is(node, "varxref");
}

/// @p expression without its selections, which become the steps of @p reference.
pugi::xml_node withoutSelections(pugi::xml_node expression, Reference *reference)
{
    reference->steps.clear();
    while (isSelection(expression)) {
        ReadGuard::check();
        reference->steps.push_back(expression);
        expression = expression.first_child();
    }
    std::reverse(reference->steps.begin(), reference->steps.end());
    return expression;
}

} // namespace

std::string_view Reference::name() const
{
    return attribute(node, "name");
}

std::string_view Reference::path() const
{
    return attribute(node, "dotted");
}

bool Reference::isHierarchical() const
{
    return is(node, "varxref");
}

bool Reference::isConstant() const
{
    return std::all_of(steps.begin(), steps.end(), [](const pugi::xml_node &step) {
        return (!is(step, "sel") && !is(step, "arraysel")) ||
               is(step.first_child().next_sibling(), "const");
    });
}

void forEachReference(const Occurrence &target, const std::function<void(const Reference &)> &visit)
{
    std::vector<pugi::xml_node> pending{target.node};
    Reference reference;
    reference.scope = target.scope;
    while (!pending.empty()) {
        const pugi::xml_node expression = pending.back();
        pending.pop_back();
        reference.node = withoutSelections(expression, &reference);
        if (isReference(reference.node)) {
            visit(reference);
            continue;
        }
        for (pugi::xml_node part = reference.node.last_child(); part;
             part = part.previous_sibling()) {
            ReadGuard::check();
            pending.push_back(part);
        }
    }
}

} // namespace NETWEIR::Internal
