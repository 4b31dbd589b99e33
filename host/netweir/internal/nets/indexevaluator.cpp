// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "indexevaluator.h"

#include <netweir/internal/xml/attributes.h>

namespace NETWEIR::Internal {

namespace {

constexpr int DeepestExpression = 40;

} // namespace

IndexEvaluator::IndexEvaluator(const Definition &definition, const TypeTable &types)
    : m_definition(definition)
    , m_types(types)
{
}

IndexRange IndexEvaluator::valuesOf(const pugi::xml_node &expression, int scope) const
{
    return evaluate(expression, scope, 0);
}

int IndexEvaluator::variableOf(const pugi::xml_node &reference, int scope) const
{
    if (!is(reference, "varref"))
        return -1;
    const Symbol symbol = m_definition.find(scope, attribute(reference, "name"));
    return symbol.kind == Symbol::Kind::Variable ? symbol.index : -1;
}

IndexRange IndexEvaluator::evaluate(const pugi::xml_node &expression, int scope, int depth) const
{
    const std::string_view tag = expression.name();
    if (depth > DeepestExpression)
        return valuesOfWidth(expression);
    if (tag == "const") {
        const auto value = constantValue(expression);
        return value ? bounded(IndexRange::single(*value)) : valuesOfWidth(expression);
    }
    if (tag == "varref") {
        const auto known = m_known.find(variableOf(expression, scope));
        return known == m_known.end() ? valuesOfWidth(expression)
                                      : IndexRange::single(known->second);
    }
    const pugi::xml_node first = expression.first_child();
    if (tag == "extend" || tag == "extends")
        return evaluate(first, scope, depth + 1);
    if (tag == "sel")
        return evaluateSelection(expression, scope, depth);
    if (tag == "cond") {
        const pugi::xml_node second = first.next_sibling();
        return united(evaluate(second, scope, depth + 1),
                      evaluate(second.next_sibling(), scope, depth + 1));
    }
    return evaluateOperation(expression, scope, depth);
}

/// A part select of an index, mostly one that cuts it to the width that the vector needs.
IndexRange IndexEvaluator::evaluateSelection(const pugi::xml_node &selection, int scope,
                                             int depth) const
{
    const pugi::xml_node value = selection.first_child();
    const auto lowest = constantValue(value.next_sibling());
    const auto width = constantValue(value.next_sibling().next_sibling());
    if (!lowest || !width || *lowest != 0)
        return valuesOfWidth(selection);
    const IndexRange values = evaluate(value, scope, depth + 1);
    return is(value, "varref") ? truncated(values, *width) : wrapped(values, *width);
}

IndexRange IndexEvaluator::evaluateOperation(const pugi::xml_node &operation, int scope,
                                             int depth) const
{
    const auto calculation = calculationOf(operation.name());
    if (!calculation)
        return valuesOfWidth(operation);
    const pugi::xml_node first = operation.first_child();
    const auto result = calculation(evaluate(first, scope, depth + 1),
                                    evaluate(first.next_sibling(), scope, depth + 1));
    return result ? wrapped(bounded(*result), m_types.at(m_types.typeOf(operation)).width)
                  : valuesOfWidth(operation);
}

IndexRange IndexEvaluator::valuesOfWidth(const pugi::xml_node &expression) const
{
    const DataType &type = m_types.at(m_types.typeOf(expression));
    return IndexRange::ofWidth(type.width, type.isSigned);
}

} // namespace NETWEIR::Internal
