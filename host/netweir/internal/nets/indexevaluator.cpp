// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "indexevaluator.h"

#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/xml/attributes.h>

#include <algorithm>
#include <numeric>

namespace NETWEIR::Internal {

namespace {

constexpr int MostRounds = 4096;
constexpr int DeepestExpression = 40;
constexpr qint64 Limit = qint64(1) << 40; ///< Far beyond every index, far from overflow.
constexpr qint64 LargestFactor = 65536;

bool is(const pugi::xml_node &node, std::string_view tag)
{
    return tag == node.name();
}

IndexRange single(qint64 value)
{
    return {value, value, 0};
}

/// Keeps values within bounds that sums and products of them do not overflow.
IndexRange bounded(const IndexRange &range)
{
    if (range.low >= -Limit && range.high <= Limit)
        return range;
    if (range.isSingle())
        return {-Limit, Limit, 1};
    const qint64 step = range.step;
    const qint64 low = std::max(range.low, -Limit + ((range.low + Limit) % step + step) % step);
    const qint64 high = std::min(range.high, low + (Limit - low) / step * step);
    return {low, high, step};
}

/// The lowest @p width bits of the values.
IndexRange truncated(const IndexRange &range, qint64 width)
{
    if (width < 1 || width > 39)
        return range;
    const qint64 modulus = qint64(1) << width;
    if (range.isSingle())
        return single(range.low & (modulus - 1));
    if (range.low >= 0 && range.high < modulus)
        return range;
    const qint64 step = std::gcd(range.step, modulus);
    const qint64 first = range.low & (step - 1);
    return {first, modulus - step + first, step};
}

/// What a calculation of that width can give. A single value is left alone: in a loop it lies out
/// of range where the source says so, since the elaborator cuts every index to its vector.
IndexRange wrapped(const IndexRange &range, qint64 width)
{
    return range.isSingle() ? range : truncated(range, width);
}

std::optional<bool> compare(std::string_view tag, qint64 a, qint64 b)
{
    if (tag == "gt" || tag == "gts")
        return a > b;
    if (tag == "gte" || tag == "gtes")
        return a >= b;
    if (tag == "lt" || tag == "lts")
        return a < b;
    if (tag == "lte" || tag == "ltes")
        return a <= b;
    if (tag == "eq")
        return a == b;
    if (tag == "neq")
        return a != b;
    return std::nullopt;
}

} // namespace

IndexRange operator+(const IndexRange &a, const IndexRange &b)
{
    return bounded({a.low + b.low, a.high + b.high, std::gcd(a.step, b.step)});
}

IndexEvaluator::IndexEvaluator(const Definition &definition, const TypeTable &types)
    : m_definition(definition)
    , m_types(types)
{
}

void IndexEvaluator::forEachRound(const Occurrence &place, const std::function<void()> &visit)
{
    m_nest.clear();
    m_known.clear();
    for (pugi::xml_node node = place.node; node && node != m_definition.node;
         node = node.parent()) {
        ReadGuard::check();
        if (!is(node, "while"))
            continue;
        const Loop &loop = loopAt(node, place.scope);
        if (loop.variable >= 0)
            m_nest.push_back(&loop);
    }
    std::reverse(m_nest.begin(), m_nest.end());

    // Counted first, so that a nest of too many rounds is visited once instead of half.
    m_rounds = 0;
    if (m_nest.empty() || !runRounds(0, [] {})) {
        m_known.clear();
        visit();
        return;
    }
    m_rounds = 0;
    runRounds(0, visit);
    m_known.clear();
}

IndexRange IndexEvaluator::valuesOf(const pugi::xml_node &expression, int scope) const
{
    return evaluate(expression, scope, 0);
}

const IndexEvaluator::Loop &IndexEvaluator::loopAt(const pugi::xml_node &loop, int scope)
{
    const auto known = m_loops.find(loop.hash_value());
    if (known != m_loops.end())
        return known->second;
    return m_loops.emplace(loop.hash_value(), readLoop(loop, scope)).first->second;
}

/// A "while" holds four blocks: preparation, condition, body and step. The start value is assigned
/// right before it.
IndexEvaluator::Loop IndexEvaluator::readLoop(const pugi::xml_node &node, int scope) const
{
    const pugi::xml_node condition = node.first_child().next_sibling();
    const pugi::xml_node body = condition.next_sibling();
    const pugi::xml_node step = body.next_sibling().first_child();
    const pugi::xml_node start = node.previous_sibling();
    if (!is(step, "assign") || !is(start, "assign"))
        return {};
    const int variable = variableOf(start.last_child(), scope);
    if (variable < 0 || variableOf(step.last_child(), scope) != variable ||
        isAssignedWithin(body, variable))
        return {};
    return {variable, scope, start.first_child(), condition.first_child(), step.first_child()};
}

bool IndexEvaluator::isAssignedWithin(const pugi::xml_node &body, int variable) const
{
    const std::string_view name =
        attribute(m_definition.variables[std::size_t(variable)].node, "name");
    // By name alone: a variable of the same name in an inner block makes the loop unknown, at
    // worst.
    const pugi::xml_node assignment = body.find_node([&](const pugi::xml_node &node) {
        ReadGuard::check();
        return (is(node, "assign") || is(node, "assigndly")) &&
               attribute(node.last_child(), "name") == name;
    });
    return bool(assignment);
}

/// The variable that a plain reference names, negative for anything else.
int IndexEvaluator::variableOf(const pugi::xml_node &reference, int scope) const
{
    if (!is(reference, "varref"))
        return -1;
    const Symbol symbol = m_definition.find(scope, attribute(reference, "name"));
    return symbol.kind == Symbol::Kind::Variable ? symbol.index : -1;
}

/// False when a loop does not count in known steps or there are too many rounds.
bool IndexEvaluator::runRounds(std::size_t depth, const std::function<void()> &visit)
{
    if (depth == m_nest.size()) {
        visit();
        return true;
    }
    const Loop &loop = *m_nest[depth];
    m_known.erase(loop.variable);
    IndexRange value = valuesOf(loop.start, loop.scope);
    while (value.isSingle()) {
        m_known[loop.variable] = value.low;
        const IndexRange a = valuesOf(loop.condition.first_child(), loop.scope);
        const IndexRange b = valuesOf(loop.condition.first_child().next_sibling(), loop.scope);
        if (!a.isSingle() || !b.isSingle())
            return false;
        const std::optional<bool> goesOn = compare(loop.condition.name(), a.low, b.low);
        if (!goesOn)
            return false;
        if (!*goesOn)
            return true;
        if (++m_rounds > MostRounds || !runRounds(depth + 1, visit))
            return false;
        value = valuesOf(loop.next, loop.scope);
    }
    return false;
}

IndexRange IndexEvaluator::evaluate(const pugi::xml_node &expression, int scope, int depth) const
{
    if (depth > DeepestExpression)
        return valuesOfWidth(expression);
    const std::string_view tag = expression.name();
    if (tag == "const") {
        const auto value = constantValue(expression);
        return value ? bounded(single(*value)) : valuesOfWidth(expression);
    }
    if (tag == "varref") {
        const auto known = m_known.find(variableOf(expression, scope));
        return known == m_known.end() ? valuesOfWidth(expression) : single(known->second);
    }
    const pugi::xml_node first = expression.first_child();
    if (tag == "extend" || tag == "extends")
        return evaluate(first, scope, depth + 1);
    if (tag == "sel")
        return evaluateSelection(expression, scope, depth);
    if (tag == "cond") {
        const IndexRange a = evaluate(first.next_sibling(), scope, depth + 1);
        const IndexRange b = evaluate(first.next_sibling().next_sibling(), scope, depth + 1);
        const qint64 step = std::gcd(std::gcd(a.step, b.step), qAbs(a.low - b.low));
        return {std::min(a.low, b.low), std::max(a.high, b.high), step};
    }
    static constexpr std::string_view Arithmetic[] = {
        "add", "sub", "mul", "muls", "shiftl", "shiftr", "and", "div", "divs", "moddiv", "moddivs"};
    if (std::find(std::begin(Arithmetic), std::end(Arithmetic), tag) != std::end(Arithmetic)) {
        const IndexRange a = evaluate(first, scope, depth + 1);
        const IndexRange b = evaluate(first.next_sibling(), scope, depth + 1);
        if (const auto result = evaluateArithmetic(tag, a, b))
            return wrapped(bounded(*result), m_types.at(m_types.typeOf(expression)).width);
    }
    return valuesOfWidth(expression);
}

/// A part select of an index, mostly one that cuts it to the width that the vector needs.
IndexRange IndexEvaluator::evaluateSelection(const pugi::xml_node &selection, int scope,
                                             int depth) const
{
    const pugi::xml_node value = selection.first_child();
    const auto lowest = constantValue(value.next_sibling());
    const auto width = constantValue(value.next_sibling().next_sibling());
    if (!lowest || !width || *lowest != 0)
        return valuesOfWidth(selection);
    const IndexRange values = evaluate(value, scope, depth + 1);
    return is(value, "varref") ? truncated(values, *width) : wrapped(values, *width);
}

std::optional<IndexRange> IndexEvaluator::evaluateArithmetic(std::string_view tag,
                                                             const IndexRange &a,
                                                             const IndexRange &b) const
{
    if (tag == "add")
        return a + b;
    if (tag == "sub")
        return IndexRange{a.low - b.high, a.high - b.low, std::gcd(a.step, b.step)};
    if (tag == "mul" || tag == "muls") {
        const IndexRange &factor = a.isSingle() ? a : b;
        const IndexRange &other = a.isSingle() ? b : a;
        const qint64 by = factor.low;
        if (!factor.isSingle() || by < 0 || by > LargestFactor)
            return std::nullopt;
        return by == 0 ? single(0) : IndexRange{other.low * by, other.high * by, other.step * by};
    }
    if (!b.isSingle() || b.low < 0 || a.low < 0)
        return std::nullopt;
    if (tag == "shiftl" && b.low <= 16)
        return evaluateArithmetic("mul", a, single(qint64(1) << b.low));
    if (tag == "shiftr" && b.low < 40)
        return IndexRange{a.low >> b.low, a.high >> b.low, a.isSingle() ? 0 : 1};
    if (tag == "and")
        return a.isSingle() ? single(a.low & b.low) : IndexRange{0, std::min(a.high, b.low), 1};
    if ((tag == "div" || tag == "divs") && b.low > 0)
        return IndexRange{a.low / b.low, a.high / b.low, a.isSingle() ? 0 : 1};
    if ((tag == "moddiv" || tag == "moddivs") && b.low > 0)
        return a.isSingle() ? single(a.low % b.low) : IndexRange{0, b.low - 1, 1};
    return std::nullopt;
}

IndexRange IndexEvaluator::valuesOfWidth(const pugi::xml_node &expression) const
{
    const DataType &type = m_types.at(m_types.typeOf(expression));
    if (type.width >= 39)
        return {-Limit, Limit, 1};
    const qint64 count = qint64(1) << type.width;
    if (type.isSigned)
        return {-count / 2, count / 2 - 1, 1};
    return {0, count - 1, 1};
}

} // namespace NETWEIR::Internal
