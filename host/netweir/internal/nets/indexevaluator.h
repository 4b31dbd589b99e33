// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/xml/definition.h>

#include <functional>
#include <optional>

namespace NETWEIR::Internal {

/// Values that an index expression can take: low, low + step, ... up to high. A step of 0 stands
/// for one single value.
struct IndexRange
{
    qint64 low = 0;
    qint64 high = 0;
    qint64 step = 0;

    bool isSingle() const { return low == high; }
};

IndexRange operator+(const IndexRange &a, const IndexRange &b);

/// Finds the values of index expressions in one definition: of constants exactly, of the variables
/// of counting loops round by round, of anything else by its width.
class IndexEvaluator
{
public:
    IndexEvaluator(const Definition &definition, const TypeTable &types);

    /// Runs @p visit for every round of the loops around @p node, with the loop variables set, or
    /// once with nothing known when there are no counting loops or too many rounds.
    void forEachRound(const Occurrence &place, const std::function<void()> &visit);

    /// The values of @p expression, whose names belong to @p scope.
    IndexRange valuesOf(const pugi::xml_node &expression, int scope) const;

private:
    struct Loop
    {
        int variable = -1; ///< Negative for one that does not count.
        int scope = 0;
        pugi::xml_node start;
        pugi::xml_node condition;
        pugi::xml_node next;
    };

    const Loop &loopAt(const pugi::xml_node &loop, int scope);
    Loop readLoop(const pugi::xml_node &loop, int scope) const;
    bool isAssignedWithin(const pugi::xml_node &body, int variable) const;
    int variableOf(const pugi::xml_node &reference, int scope) const;
    bool runRounds(std::size_t depth, const std::function<void()> &visit);
    IndexRange evaluate(const pugi::xml_node &expression, int scope, int depth) const;
    IndexRange evaluateSelection(const pugi::xml_node &selection, int scope, int depth) const;
    std::optional<IndexRange> evaluateArithmetic(std::string_view tag, const IndexRange &a,
                                                 const IndexRange &b) const;
    IndexRange valuesOfWidth(const pugi::xml_node &expression) const;

    const Definition &m_definition;
    const TypeTable &m_types;
    std::unordered_map<std::size_t, Loop> m_loops;
    std::vector<const Loop *> m_nest; ///< Outermost first.
    std::unordered_map<int, qint64> m_known;
    int m_rounds = 0;
};

} // namespace NETWEIR::Internal
