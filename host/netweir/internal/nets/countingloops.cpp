// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "countingloops.h"

#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/xml/attributes.h>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

constexpr int MostRounds = 4096;

} // namespace

CountingLoops::CountingLoops(const Definition &definition, const TypeTable &types)
    : m_definition(definition)
    , m_indexes(definition, types)
{
}

void CountingLoops::forEachRound(const Occurrence &reference, const Visit &visit)
{
    const Nest nest = nestAround(reference);
    // Counted first, so that loops with too many rounds are visited once and not partly.
    if (nest.empty() || !run(nest, [](const IndexEvaluator &) {}))
        visit(m_indexes);
    else
        run(nest, visit);
}

CountingLoops::Nest CountingLoops::nestAround(const Occurrence &reference)
{
    Nest nest;
    for (pugi::xml_node node = reference.node; node && node != m_definition.node;
         node = node.parent()) {
        ReadGuard::check();
        if (!is(node, "while"))
            continue;
        const Loop &loop = loopAt(node, reference.scope);
        if (loop.variable >= 0)
            nest.push_back(&loop);
    }
    std::reverse(nest.begin(), nest.end());
    return nest;
}

const CountingLoops::Loop &CountingLoops::loopAt(const pugi::xml_node &loop, int scope)
{
    const auto known = m_loops.find(loop.hash_value());
    if (known != m_loops.end())
        return known->second;
    return m_loops.emplace(loop.hash_value(), readLoop(loop, scope)).first->second;
}

/// A "while" element has four blocks: preparation, condition, body and step. The assignment of the
/// start value precedes it.
CountingLoops::Loop CountingLoops::readLoop(const pugi::xml_node &node, int scope) const
{
    const pugi::xml_node condition = node.first_child().next_sibling();
    const pugi::xml_node body = condition.next_sibling();
    const pugi::xml_node step = body.next_sibling().first_child();
    const pugi::xml_node start = node.previous_sibling();
    if (!is(step, "assign") || !is(start, "assign"))
        return {};
    const int variable = m_indexes.variableOf(start.last_child(), scope);
    if (variable < 0 || m_indexes.variableOf(step.last_child(), scope) != variable ||
        isAssignedWithin(body, variable))
        return {};
    return {variable, scope, start.first_child(), condition.first_child(), step.first_child()};
}

/// Compares only the name: at worst a variable with the same name in an inner block makes the loop
/// a non-counting one.
bool CountingLoops::isAssignedWithin(const pugi::xml_node &body, int variable) const
{
    const std::string_view name = attribute(itemAt(m_definition.variables, variable).node, "name");
    const pugi::xml_node assignment = body.find_node([&](const pugi::xml_node &node) {
        ReadGuard::check();
        return (is(node, "assign") || is(node, "assigndly")) &&
               attribute(node.last_child(), "name") == name;
    });
    return bool(assignment);
}

/// False when a loop does not count in known steps, or when there are too many rounds.
bool CountingLoops::run(const Nest &nest, const Visit &visit) const
{
    Pass pass{nest, visit, m_indexes};
    return runLevel(0, &pass);
}

bool CountingLoops::runLevel(int level, Pass *pass)
{
    if (level == countOf(pass->nest)) {
        pass->visit(pass->round);
        return true;
    }
    const Loop &loop = *itemAt(pass->nest, level);
    IndexEvaluator &round = pass->round;
    round.forgetValue(loop.variable);
    IndexRange value = round.valuesOf(loop.start, loop.scope);
    while (value.isSingle()) {
        round.setValue(loop.variable, value.low);
        const pugi::xml_node left = loop.condition.first_child();
        const IndexRange a = round.valuesOf(left, loop.scope);
        const IndexRange b = round.valuesOf(left.next_sibling(), loop.scope);
        const auto goesOn = compared(loop.condition.name(), a.low, b.low);
        if (!a.isSingle() || !b.isSingle() || !goesOn)
            return false;
        if (!*goesOn)
            return true;
        if (++pass->rounds > MostRounds || !runLevel(level + 1, pass))
            return false;
        value = round.valuesOf(loop.next, loop.scope);
    }
    return false;
}

} // namespace NETWEIR::Internal
