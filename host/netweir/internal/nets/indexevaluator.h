// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "indexrange.h"

#include <netweir/internal/xml/definition.h>
#include <netweir/internal/xml/typetable.h>

#include <unordered_map>

namespace NETWEIR::Internal {

/// Finds the values of index expressions in one definition: of constants and of variables with a
/// known value exactly, of anything else by its width. Refers to the definition and its types.
class IndexEvaluator
{
public:
    IndexEvaluator(const Definition &definition, const TypeTable &types);

    /// From now on the variable of that index has one single value.
    void setValue(int variable, qint64 value) { m_known[variable] = value; }
    void forgetValue(int variable) { m_known.erase(variable); }

    /// The values of @p expression, whose names belong to @p scope.
    IndexRange valuesOf(const pugi::xml_node &expression, int scope) const;

    /// The variable that a plain reference names, negative for anything else.
    int variableOf(const pugi::xml_node &reference, int scope) const;

private:
    IndexRange evaluate(const pugi::xml_node &expression, int scope, int depth) const;
    IndexRange evaluateSelection(const pugi::xml_node &selection, int scope, int depth) const;
    IndexRange evaluateOperation(const pugi::xml_node &operation, int scope, int depth) const;
    IndexRange valuesOfWidth(const pugi::xml_node &expression) const;

    const Definition &m_definition;
    const TypeTable &m_types;
    std::unordered_map<int, qint64> m_known;
};

} // namespace NETWEIR::Internal
