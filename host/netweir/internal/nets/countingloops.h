// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "indexevaluator.h"

#include <functional>
#include <unordered_map>
#include <vector>

namespace NETWEIR::Internal {

/// Iterates over the rounds of the counting loops of a definition: "while" elements with a variable
/// that is set before the loop, compared in the condition and counted in the step, all with known
/// numbers. Refers to the definition and its types.
class CountingLoops
{
public:
    /// Receives the values of the loop variables in one round. They change after the call.
    using Visit = std::function<void(const IndexEvaluator &round)>;

    CountingLoops(const Definition &definition, const TypeTable &types);

    /// Calls @p visit for every round of the counting loops around @p reference, outer loops first.
    /// Calls it once without known values when there are no such loops or more than 4096 rounds.
    void forEachRound(const Occurrence &reference, const Visit &visit);

private:
    struct Loop
    {
        int variable = -1; ///< Negative for a loop that does not count.
        int scope = 0;
        pugi::xml_node start;
        pugi::xml_node condition;
        pugi::xml_node next;
    };
    using Nest = std::vector<const Loop *>; ///< Outermost first.

    /// One pass through the rounds of nested loops.
    struct Pass
    {
        const Nest &nest;
        const Visit &visit;
        IndexEvaluator round;
        int rounds = 0;
    };

    Nest nestAround(const Occurrence &reference);
    const Loop &loopAt(const pugi::xml_node &loop, int scope);
    Loop readLoop(const pugi::xml_node &loop, int scope) const;
    bool isAssignedWithin(const pugi::xml_node &body, int variable) const;
    bool run(const Nest &nest, const Visit &visit) const;
    static bool runLevel(int level, Pass *pass);

    const Definition &m_definition;
    IndexEvaluator m_indexes;                      ///< Without known values.
    std::unordered_map<std::size_t, Loop> m_loops; ///< Loops by the hash of their elements.
};

} // namespace NETWEIR::Internal
