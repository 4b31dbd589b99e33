// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "indexrange.h"

#include <netweir/internal/xml/definition.h>
#include <netweir/internal/xml/typetable.h>

#include <utility>
#include <vector>

namespace NETWEIR::Internal {

/// The variables with one single value: pairs of index and value. They are few, those of nested
/// loops.
using KnownValues = std::vector<std::pair<int, qint64>>;

/// An index expression of a definition with all names, numbers and types looked up, so that it is
/// quick to evaluate in many rounds of a loop. Independent of the elements once it is built.
class IndexExpression
{
public:
    /// @p expression is an element of @p definition; its names belong to @p scope.
    IndexExpression(const Definition &definition, const TypeTable &types,
                    const pugi::xml_node &expression, int scope);

    /// Constants and known variables exactly, anything else by its width.
    IndexRange values(const KnownValues &known) const { return evaluate(m_root, known); }

    /// The variable of @p definition that a plain reference names, negative for anything else.
    static int variableOf(const Definition &definition, const pugi::xml_node &reference, int scope);

private:
    enum class Kind { Fixed, Variable, Truncated, Wrapped, United, Calculated };

    /// An operand or operation. Operands are steps too, by their index.
    struct Step
    {
        Kind kind = Kind::Fixed;
        IndexRange range; ///< The result if nothing else is known.
        int variable = -1;
        int first = -1;
        int second = -1;
        qint64 width = 0; ///< Of the result.
        IndexCalculation calculation = nullptr;
    };

    int add(const pugi::xml_node &expression, int scope, int depth);
    Step read(const pugi::xml_node &expression, int scope, int depth);
    Step readSelection(const pugi::xml_node &selection, int scope, int depth);
    Step readOperation(const pugi::xml_node &operation, int scope, int depth);
    Step fixed(const IndexRange &range) const;
    IndexRange rangeOfWidth(const pugi::xml_node &expression) const;
    IndexRange evaluate(int step, const KnownValues &known) const;
    static IndexRange calculated(const Step &step, const IndexRange &a, const IndexRange &b);

    const Definition &m_definition;
    const TypeTable &m_types;
    std::vector<Step> m_steps;
    int m_root = 0;
};

} // namespace NETWEIR::Internal
