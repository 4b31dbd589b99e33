// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "indexexpression.h"

#include <netweir/internal/xml/attributes.h>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

constexpr int DeepestExpression = 40;

} // namespace

IndexExpression::IndexExpression(const Definition &definition, const TypeTable &types,
                                 const pugi::xml_node &expression, int scope)
    : m_definition(definition)
    , m_types(types)
    , m_root(add(expression, scope, 0))
{
}

int IndexExpression::variableOf(const Definition &definition, const pugi::xml_node &reference,
                                int scope)
{
    if (!is(reference, "varref"))
        return -1;
    const Symbol symbol = definition.find(scope, attribute(reference, "name"));
    return symbol.kind == Symbol::Kind::Variable ? symbol.index : -1;
}

/// Adds the steps of @p expression; returns the index of the last one, its result.
int IndexExpression::add(const pugi::xml_node &expression, int scope, int depth)
{
    const Step step = read(expression, scope, depth);
    m_steps.push_back(step);
    return countOf(m_steps) - 1;
}

IndexExpression::Step IndexExpression::read(const pugi::xml_node &expression, int scope, int depth)
{
    const std::string_view tag = expression.name();
    if (depth > DeepestExpression)
        return fixed(rangeOfWidth(expression));
    if (tag == "const") {
        const auto value = constantValue(expression);
        return fixed(value ? bounded(IndexRange::single(*value)) : rangeOfWidth(expression));
    }
    if (tag == "varref") {
        Step step = fixed(rangeOfWidth(expression));
        step.kind = Kind::Variable;
        step.variable = variableOf(m_definition, expression, scope);
        return step;
    }
    const pugi::xml_node first = expression.first_child();
    if (tag == "extend" || tag == "extends")
        return read(first, scope, depth + 1);
    if (tag == "sel")
        return readSelection(expression, scope, depth);
    if (tag == "cond") {
        Step step;
        step.kind = Kind::United;
        step.first = add(first.next_sibling(), scope, depth + 1);
        step.second = add(first.next_sibling().next_sibling(), scope, depth + 1);
        return step;
    }
    return readOperation(expression, scope, depth);
}

/// A part select of an index, mostly one that cuts it to the width that the vector needs.
IndexExpression::Step IndexExpression::readSelection(const pugi::xml_node &selection, int scope,
                                                     int depth)
{
    const pugi::xml_node value = selection.first_child();
    const auto lowest = constantValue(value.next_sibling());
    const auto width = constantValue(value.next_sibling().next_sibling());
    if (!lowest || !width || *lowest != 0)
        return fixed(rangeOfWidth(selection));
    Step step;
    step.kind = is(value, "varref") ? Kind::Truncated : Kind::Wrapped;
    step.width = *width;
    step.first = add(value, scope, depth + 1);
    return step;
}

IndexExpression::Step IndexExpression::readOperation(const pugi::xml_node &operation, int scope,
                                                     int depth)
{
    Step step = fixed(rangeOfWidth(operation));
    step.calculation = calculationOf(operation.name());
    if (!step.calculation)
        return step;
    step.kind = Kind::Calculated;
    step.width = m_types.at(m_types.typeOf(operation)).width;
    const pugi::xml_node first = operation.first_child();
    step.first = add(first, scope, depth + 1);
    step.second = add(first.next_sibling(), scope, depth + 1);
    return step;
}

IndexExpression::Step IndexExpression::fixed(const IndexRange &range) const
{
    Step step;
    step.range = range;
    return step;
}

IndexRange IndexExpression::rangeOfWidth(const pugi::xml_node &expression) const
{
    const DataType &type = m_types.at(m_types.typeOf(expression));
    return IndexRange::ofWidth(type.width, type.isSigned);
}

IndexRange IndexExpression::evaluate(int number, const KnownValues &known) const
{
    const Step &step = itemAt(m_steps, number);
    switch (step.kind) {
    case Kind::Fixed:
        break;
    case Kind::Variable: {
        const auto value = std::find_if(known.begin(), known.end(), [&step](const auto &entry) {
            return entry.first == step.variable;
        });
        return value == known.end() ? step.range : IndexRange::single(value->second);
    }
    case Kind::Truncated:
        return truncated(evaluate(step.first, known), step.width);
    case Kind::Wrapped:
        return wrapped(evaluate(step.first, known), step.width);
    case Kind::United:
        return united(evaluate(step.first, known), evaluate(step.second, known));
    case Kind::Calculated:
        return calculated(step, evaluate(step.first, known), evaluate(step.second, known));
    }
    return step.range;
}

IndexRange IndexExpression::calculated(const Step &step, const IndexRange &a, const IndexRange &b)
{
    const auto result = step.calculation(a, b);
    return result ? wrapped(bounded(*result), step.width) : step.range;
}

} // namespace NETWEIR::Internal
