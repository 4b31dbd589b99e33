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
///
/// The rounds of a loop are found once for all references that follow each other in it.
class CountingLoops
{
public:
    /// Receives the values of the loop variables in one round. They change after the call.
    using Visit = std::function<void(const IndexEvaluator &round)>;

    CountingLoops(const Definition &definition, const TypeTable &types);

    /// Calls @p visit for every round of the counting loops around @p reference, outer loops first.
    /// Calls it once without known values when there are no such loops or more than 4096 rounds.
    void forEachRound(const Occurrence &reference, const Visit &visit);

    /// To be called before other elements of the definition come into memory.
    void forgetElements();

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

    /// The values of the loop variables in all rounds of nested loops.
    struct Rounds
    {
        Nest nest;
        std::vector<qint64> values; ///< Round by round, one number for each loop of the nest.
        bool areKnown = false;
    };

    /// One pass through the rounds of nested loops.
    struct Pass
    {
        Rounds *result;
        IndexEvaluator round;
        std::vector<qint64> values; ///< Of the loops entered.
        int rounds = 0;
    };

    pugi::xml_node innermostLoop(const Occurrence &reference);
    Nest nestAround(const pugi::xml_node &innermost, int scope);
    const Rounds &roundsOf(const pugi::xml_node &innermost, int scope);
    const Loop &loopAt(const pugi::xml_node &loop, int scope);
    Loop readLoop(const pugi::xml_node &loop, int scope) const;
    static bool isAssignedWithin(const pugi::xml_node &body, std::string_view name);
    static bool runLevel(int level, Pass *pass);

    const Definition &m_definition;
    IndexEvaluator m_indexes;                      ///< Without known values.
    std::unordered_map<std::size_t, Loop> m_loops; ///< Loops by the hash of their elements.
    pugi::xml_node m_innermost;                    ///< The loop whose rounds are in m_rounds.
    Rounds m_rounds;
};

} // namespace NETWEIR::Internal
