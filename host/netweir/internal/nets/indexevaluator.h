// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "indexexpression.h"

namespace NETWEIR::Internal {

/// Finds the values of index expressions in one definition: of constants and of variables with a
/// known value exactly, of anything else by its width. Refers to the definition and its types.
///
/// While there are known values, it keeps the expressions that it has looked up: the rounds of a
/// loop evaluate the same few ones with other values.
class IndexEvaluator
{
public:
    IndexEvaluator(const Definition &definition, const TypeTable &types);

    /// From now on the variable of that index has one single value.
    void setValue(int variable, qint64 value);
    void forgetValue(int variable);

    /// The values of @p expression, whose names belong to @p scope.
    IndexRange valuesOf(const pugi::xml_node &expression, int scope) const;

    /// The variable that a plain reference names, negative for anything else.
    int variableOf(const pugi::xml_node &reference, int scope) const;

private:
    struct Kept
    {
        pugi::xml_node node;
        int scope;
        IndexExpression expression;
    };

    const IndexExpression &expressionAt(const pugi::xml_node &node, int scope) const;

    const Definition &m_definition;
    const TypeTable &m_types;
    KnownValues m_known;
    mutable std::vector<Kept> m_kept;
};

} // namespace NETWEIR::Internal
