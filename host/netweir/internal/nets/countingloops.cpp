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
    const pugi::xml_node innermost = innermostLoop(reference);
    const Rounds *rounds = innermost ? &roundsOf(innermost, reference.scope) : nullptr;
    // Loops with too many rounds are visited once and not partly.
    if (!rounds || !rounds->areKnown)
        return visit(m_indexes);
    IndexEvaluator round = m_indexes;
    for (auto value = rounds->values.begin(); value != rounds->values.end();) {
        ReadGuard::check();
        for (const Loop *loop : rounds->nest)
            round.setValue(loop->variable, *value++);
        visit(round);
    }
}

void CountingLoops::forgetElements()
{
    m_loops.clear();
    m_innermost = {};
    m_rounds = {};
}

/// The innermost counting loop around @p reference, null without any.
pugi::xml_node CountingLoops::innermostLoop(const Occurrence &reference)
{
    pugi::xml_node node = reference.node;
    while (node && node != m_definition.node) {
        ReadGuard::check();
        if (is(node, "while") && loopAt(node, reference.scope).variable >= 0)
            return node;
        node = node.parent();
    }
    return {};
}

CountingLoops::Nest CountingLoops::nestAround(const pugi::xml_node &innermost, int scope)
{
    Nest nest;
    for (pugi::xml_node loop = innermost; loop; loop = innermostLoop({loop.parent(), scope}))
        nest.push_back(&loopAt(loop, scope));
    std::reverse(nest.begin(), nest.end());
    return nest;
}

const CountingLoops::Rounds &CountingLoops::roundsOf(const pugi::xml_node &innermost, int scope)
{
    if (m_innermost == innermost)
        return m_rounds;
    m_innermost = innermost;
    m_rounds = {nestAround(innermost, scope), {}, false};
    Pass pass{&m_rounds, m_indexes, {}};
    m_rounds.areKnown = runLevel(0, &pass);
    return m_rounds;
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
        isAssignedWithin(body, attribute(start.last_child(), "name")))
        return {};
    return {variable, scope, start.first_child(), condition.first_child(), step.first_child()};
}

/// Compares only the name: at worst a variable with the same name in an inner block makes the loop
/// a non-counting one.
bool CountingLoops::isAssignedWithin(const pugi::xml_node &body, std::string_view name)
{
    const pugi::xml_node assignment = body.find_node([&](const pugi::xml_node &node) {
        ReadGuard::check();
        return (is(node, "assign") || is(node, "assigndly")) &&
               attribute(node.last_child(), "name") == name;
    });
    return bool(assignment);
}

/// False when a loop does not count in known steps, or when there are too many rounds.
bool CountingLoops::runLevel(int level, Pass *pass)
{
    std::vector<qint64> &values = pass->result->values;
    if (level == countOf(pass->result->nest)) {
        values.insert(values.end(), pass->values.begin(), pass->values.end());
        return true;
    }
    const Loop &loop = *itemAt(pass->result->nest, level);
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
        if (++pass->rounds > MostRounds)
            return false;
        pass->values.push_back(value.low);
        const bool isKnown = runLevel(level + 1, pass);
        pass->values.pop_back();
        if (!isKnown)
            return false;
        value = round.valuesOf(loop.next, loop.scope);
    }
    return false;
}

} // namespace NETWEIR::Internal
