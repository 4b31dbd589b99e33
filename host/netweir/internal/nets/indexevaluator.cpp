// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "indexevaluator.h"

#include <netweir/internal/xml/attributes.h>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

/// More than nested loops and the indexes of one reference have.
constexpr int MostKept = 32;

auto entryOf(KnownValues &values, int variable)
{
    return std::find_if(values.begin(), values.end(),
                        [variable](const auto &entry) { return entry.first == variable; });
}

} // namespace

IndexEvaluator::IndexEvaluator(const Definition &definition, const TypeTable &types)
    : m_definition(definition)
    , m_types(types)
{
}

void IndexEvaluator::setValue(int variable, qint64 value)
{
    const auto entry = entryOf(m_known, variable);
    if (entry == m_known.end())
        m_known.emplace_back(variable, value);
    else
        entry->second = value;
}

void IndexEvaluator::forgetValue(int variable)
{
    const auto entry = entryOf(m_known, variable);
    if (entry != m_known.end())
        m_known.erase(entry);
}

IndexRange IndexEvaluator::valuesOf(const pugi::xml_node &expression, int scope) const
{
    if (is(expression, "const")) {
        if (const auto value = constantValue(expression))
            return bounded(IndexRange::single(*value));
    }
    if (m_known.empty())
        return IndexExpression(m_definition, m_types, expression, scope).values(m_known);
    return expressionAt(expression, scope).values(m_known);
}

int IndexEvaluator::variableOf(const pugi::xml_node &reference, int scope) const
{
    return IndexExpression::variableOf(m_definition, reference, scope);
}

const IndexExpression &IndexEvaluator::expressionAt(const pugi::xml_node &node, int scope) const
{
    const auto kept = std::find_if(m_kept.begin(), m_kept.end(), [&](const Kept &candidate) {
        return candidate.node == node && candidate.scope == scope;
    });
    if (kept != m_kept.end())
        return kept->expression;
    if (countOf(m_kept) == MostKept)
        m_kept.clear();
    m_kept.push_back({node, scope, IndexExpression(m_definition, m_types, node, scope)});
    return m_kept.back().expression;
}

} // namespace NETWEIR::Internal
