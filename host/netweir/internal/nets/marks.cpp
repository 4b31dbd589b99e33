// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "marks.h"

#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/xml/attributes.h>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

bool is(const pugi::xml_node &node, std::string_view tag)
{
    return tag == node.name();
}

/// A part select of a concatenation, which only widths that do not match lead to.
bool isSelectionOfParts(pugi::xml_node expression)
{
    if (!is(expression, "sel"))
        return false;
    while (is(expression, "sel"))
        expression = expression.first_child();
    return is(expression, "concat");
}

/// What a user connected to a pin, without what fits it to the width of the pin. A selection that
/// the elaborator adds stands where its operand does, one of a user's at its bracket or dot.
pugi::xml_node connectedPart(pugi::xml_node expression)
{
    while (is(expression, "extend") || is(expression, "extends") ||
           (is(expression, "sel") &&
            attribute(expression, "loc") == attribute(expression.first_child(), "loc"))) {
        ReadGuard::check();
        expression = expression.first_child();
    }
    return expression;
}

constexpr int MarkDriver = MarkOut | MarkWritten;

void markBits(const BitRange &range, int mark, std::vector<quint8> *marks)
{
    const qint64 end = std::min(range.end, qint64(marks->size()));
    const auto fill = [&](qint64 first, qint64 last) {
        for (qint64 bit = first; bit < std::min(last, end); ++bit)
            (*marks)[std::size_t(bit)] |= quint8(mark);
    };
    if (range.step <= range.width) {
        fill(range.low, range.high + range.width);
        return;
    }
    for (qint64 low = range.low; low <= range.high; low += range.step) {
        ReadGuard::check();
        fill(low, low + range.width);
    }
}

} // namespace

MarkReader::MarkReader(ElaboratedDesign *design, const Layout &layout, Definition *definition)
    : m_design(design)
    , m_layout(layout)
    , m_definition(definition)
    , m_indexes(*definition, design->types())
    , m_loops(*definition, design->types())
{
}

void MarkReader::read()
{
    for (const Variable &variable : m_definition->variables) {
        if (variable.isDrivenByConstant && variable.isNet)
            markVariable(variable, MarkDriver);
        else if (variable.isTied && variable.isNet)
            markVariable(variable, MarkOut);
    }
    markSupplies();
    markOmitted();
    for (const Occurrence &target : m_definition->writes)
        markWrites(target, MarkDriver);
    for (const Occurrence &call : m_definition->calls) {
        const std::vector<bool> written = m_design->writtenArguments(*m_definition, call);
        std::size_t i = 0;
        for (const pugi::xml_node &argument : call.node.children("arg")) {
            ReadGuard::check();
            if (i < written.size() && written[i])
                markWrites({argument.first_child(), call.scope}, MarkDriver);
            ++i;
        }
    }
    for (std::size_t item = 0; item < m_definition->instances.size(); ++item)
        readPins(int(item));
}

void MarkReader::markWrites(const Occurrence &target, int marks)
{
    forEachReference(target, [this, marks](const Reference &reference) {
        if (reference.isConstant() || reference.isHierarchical()) {
            markWrite(reference, m_indexes, marks);
            return;
        }
        m_loops.forEachRound({reference.node, reference.scope},
                             [this, &reference, marks](const IndexEvaluator &round) {
                                 markWrite(reference, round, marks);
                             });
    });
}

void MarkReader::markWrite(const Reference &reference, const IndexEvaluator &indexes, int marks)
{
    if (reference.isHierarchical()) {
        m_definition->writesElsewhere.push_back(reference);
        return;
    }
    if (const Variable *variable = variableOf(reference))
        markBits(m_layout.locate(*variable, reference, indexes), marks, &m_definition->marks);
}

void MarkReader::markVariable(const Variable &variable, int marks)
{
    const qint64 end = variable.bit + m_layout.widthOf(variable);
    for (qint64 bit = variable.bit; bit < end; ++bit)
        m_definition->marks[std::size_t(bit)] |= quint8(marks);
}

void MarkReader::markSupplies()
{
    for (const Occurrence &supply : m_definition->supplies) {
        forEachReference(supply, [this](const Reference &reference) {
            const Variable *variable = reference.isHierarchical() ? nullptr : variableOf(reference);
            if (variable && attribute(variable->node, "loc") == attribute(reference.node, "loc"))
                markVariable(*variable, MarkBoth);
        });
    }
}

void MarkReader::markOmitted()
{
    if (m_definition->omittedWrites.isEmpty())
        return;
    for (std::size_t i = 0; i < m_definition->variables.size(); ++i) {
        if (m_definition->variables[i].isNet)
            m_nets.insert(m_definition->variables[i].name, int(i));
    }
    for (std::size_t i = 0; i < m_definition->leafs.size(); ++i)
        m_buses.insert(m_definition->leafs[i].bit, int(i));
    for (const OmittedWrite &write : qAsConst(m_definition->omittedWrites))
        markOmitted(write);
}

void MarkReader::markOmitted(const OmittedWrite &write)
{
    const QString first = write.path.section(QLatin1Char('.'), 0, 0);
    if (write.path.isEmpty()) {
        markOwn(write);
    } else if (m_nets.contains(first)) { // A member of a structure.
        markOwn({first, QString(), -1, -1});
    } else if (m_definition->find(0, first.toStdString()).kind == Symbol::Kind::None) {
        markOwn({write.name, QString(), -1, -1}); // By way of a clocking block.
    } else {
        pugi::xml_node target = m_definition->node.append_child("varxref");
        target.append_attribute("name") = write.name.toUtf8().constData();
        target.append_attribute("dotted") = write.path.toUtf8().constData();
        m_definition->writesElsewhere.push_back({target, {}, 0});
    }
}

/// Marks the nets of that name, whatever scope they are in.
void MarkReader::markOwn(const OmittedWrite &write)
{
    const QList<int> nets = m_nets.values(write.name);
    for (const int net : nets) {
        const Variable &variable = m_definition->variables[std::size_t(net)];
        const int bus = write.left < 0 ? -1 : m_buses.value(variable.bit, -1);
        const Leaf leaf = bus < 0 ? Leaf() : m_definition->leafs[std::size_t(bus)];
        const auto [lowest, highest] = std::minmax(leaf.left, leaf.right);
        const auto [first, last] = std::minmax(write.left, write.right);
        if (!leaf.isBus || leaf.width() != m_layout.widthOf(variable) || first < lowest ||
            last > highest) {
            markVariable(variable, MarkDriver);
            continue;
        }
        const qint64 low = leaf.left >= leaf.right ? first - leaf.right : leaf.right - last;
        markBits({leaf.bit + low, leaf.bit + low, 1, last - first + 1, leaf.bit + leaf.width()},
                 MarkDriver, &m_definition->marks);
    }
}

void MarkReader::readPins(int item)
{
    for (const pugi::xml_node &pin :
         m_definition->instances[std::size_t(item)].node.children("port")) {
        ReadGuard::check();
        if (pin.first_child())
            readPin(item, pin);
    }
}

void MarkReader::readPin(int item, const pugi::xml_node &pin)
{
    const InstanceItem &instance = m_definition->instances[std::size_t(item)];
    const Definition *inner = instance.definition;
    const Occurrence expression{pin.first_child(), instance.scope};
    if (!inner || inner->role == Definition::Role::Stub) {
        const Occurrence connected{connectedPart(expression.node), expression.scope};
        if (isConnectable(connected))
            markWrites(connected, MarkOut);
        return;
    }
    const int port = inner->portOfPin(attribute(pin, "name"));
    if (port < 0)
        return;
    const Variable &variable = inner->variables[std::size_t(port)];
    if (variable.isInterfacePort)
        return; // Bound to an instance already.
    const bool isTwoWay =
        variable.direction == Direction::Inout || variable.direction == Direction::Ref;
    if (variable.direction == Direction::Output || (isTwoWay && !inner->isNode()))
        markWrites(expression, MarkDriver);
    else if (inner->isNode())
        connect(item, port, expression.node);
}

void MarkReader::connect(int item, int port, const pugi::xml_node &expression)
{
    const InstanceItem &instance = m_definition->instances[std::size_t(item)];
    Connection connection;
    connection.item = item;
    connection.port = port;
    addSegments(expression, instance.scope, &connection);
    markDrivenWithin(connection);
    m_definition->connections.push_back(std::move(connection));
}

void MarkReader::addSegments(const pugi::xml_node &expression, int scope, Connection *connection)
{
    const TypeTable &types = m_design->types();
    std::vector<pugi::xml_node> pending{expression};
    while (!pending.empty()) {
        ReadGuard::check();
        const pugi::xml_node part = pending.back();
        pending.pop_back();
        if (is(part, "concat")) {
            pending.push_back(part.first_child());
            pending.push_back(part.last_child());
            continue;
        }
        const qint64 before = connection->width;
        const qint64 width = types.at(types.typeOf(part)).width;
        const pugi::xml_node inner =
            is(part, "extend") || is(part, "extends") ? part.first_child() : part;
        if (isConnectable({inner, scope}) && !isSelectionOfParts(inner)) {
            // Most significant first; the segments grow from the other end.
            std::vector<Reference> references;
            forEachReference({inner, scope}, [&references](const Reference &reference) {
                references.push_back(reference);
            });
            for (auto reference = references.rbegin(); reference != references.rend(); ++reference)
                addSegment(*reference, connection);
        }
        const qint64 rest = width - (connection->width - before);
        if (rest > 0)
            addSegment(Segment::Kind::Driven, 0, rest, connection);
    }
}

void MarkReader::addSegment(const Reference &reference, Connection *connection)
{
    const TypeTable &types = m_design->types();
    const pugi::xml_node outermost =
        reference.steps.empty() ? reference.node : reference.steps.back();
    const qint64 width = types.at(types.typeOf(outermost)).width;
    if (reference.isHierarchical()) {
        addSegment(Segment::Kind::Elsewhere, qint64(m_definition->connectedElsewhere.size()), width,
                   connection);
        m_definition->connectedElsewhere.push_back(reference);
        return;
    }
    const Variable *variable = variableOf(reference);
    const BitRange range = variable ? m_layout.locate(*variable, reference, m_indexes) : BitRange();
    if (range.width == width && range.low + width <= range.end)
        addSegment(Segment::Kind::Own, range.low, width, connection);
    else
        addSegment(Segment::Kind::Driven, 0, width, connection);
}

void MarkReader::addSegment(Segment::Kind kind, qint64 bit, qint64 width, Connection *connection)
{
    connection->segments.push_back({kind, bit, width});
    connection->width += width;
}

/// A port of both directions that the instance drives from within is a driver here, and so is an
/// input that the instance writes to. What only may drive, such as a pin of an unknown module, does
/// not count behind an input.
void MarkReader::markDrivenWithin(const Connection &connection)
{
    const InstanceItem &instance = m_definition->instances[std::size_t(connection.item)];
    const Definition &inner = *instance.definition;
    const Variable &port = inner.variables[std::size_t(connection.port)];
    const int driver = port.direction == Direction::Input ? MarkWritten : MarkOut;
    const qint64 portWidth = m_layout.widthOf(port);
    qint64 offset = 0;
    for (const Segment &segment : connection.segments) {
        for (qint64 i = 0; i < segment.width && segment.kind == Segment::Kind::Own; ++i) {
            const std::size_t innerBit = std::size_t(port.bit + (offset + i) % portWidth);
            if (innerBit < inner.marks.size() && (inner.marks[innerBit] & driver))
                m_definition->marks[std::size_t(segment.bit + i)] |=
                    quint8(MarkOut | (inner.marks[innerBit] & MarkWritten));
        }
        offset += segment.width;
    }
}

/// True for what a port of any direction can be connected to: variables, parts of them at constant
/// places, concatenations of these.
bool MarkReader::isConnectable(const Occurrence &expression) const
{
    std::vector<pugi::xml_node> pending{expression.node};
    while (!pending.empty()) {
        ReadGuard::check();
        pugi::xml_node part = pending.back();
        pending.pop_back();
        if (is(part, "concat")) {
            pending.push_back(part.first_child());
            pending.push_back(part.last_child());
            continue;
        }
        if (is(part, "extend"))
            part = part.first_child();
        while (is(part, "sel") || is(part, "arraysel") || is(part, "slicesel") ||
               is(part, "structsel")) {
            if (!is(part, "structsel") && !is(part.first_child().next_sibling(), "const"))
                return false;
            part = part.first_child();
        }
        if (is(part, "concat"))
            pending.push_back(part);
        else if (!is(part, "varref") && !is(part, "varxref"))
            return false;
    }
    return true;
}

/// The net of this definition that a plain reference names; null for locals, constants and
/// variables of packages.
Variable *MarkReader::variableOf(const Reference &reference) const
{
    const std::string_view name = attribute(reference.node, "name");
    const Symbol symbol = m_definition->find(reference.scope, name);
    if (symbol.kind != Symbol::Kind::Variable)
        return nullptr;
    Variable *variable = &m_definition->variables[std::size_t(symbol.index)];
    if (!variable->isNet)
        return nullptr;
    if (m_design->isPackageVariable(name) && m_design->sources()
                                                 .textBefore(attribute(reference.node, "loc"), 1)
                                                 .trimmed()
                                                 .endsWith("::"))
        return nullptr;
    return variable;
}

} // namespace NETWEIR::Internal
