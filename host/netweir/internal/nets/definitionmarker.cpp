// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "definitionmarker.h"

#include "connectionbuilder.h"
#include "omittedwrites.h"

#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/xml/attributes.h>
#include <netweir/internal/xml/elaborateddesign.h>
#include <netweir/internal/xml/pinexpression.h>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

/// In the order of the ports, one of each, so that the order in an instance does not matter.
void sortPins(std::vector<BorderPin> *pins)
{
    std::stable_sort(pins->begin(), pins->end(),
                     [](const BorderPin &a, const BorderPin &b) { return a.port < b.port; });
    const auto end =
        std::unique(pins->begin(), pins->end(),
                    [](const BorderPin &a, const BorderPin &b) { return a.port == b.port; });
    pins->erase(end, pins->end());
}

} // namespace

DefinitionMarker::DefinitionMarker(const ElaboratedDesign &design, const Layout &layout,
                                   const std::vector<MarkedDefinition> &marked,
                                   const PlacedDefinition &placed)
    : m_design(design)
    , m_marked(marked)
    , m_placed(placed)
    , m_definition(*placed.definition)
    , m_bits(design, layout, placed)
{
    m_result.placed = &m_placed;
    m_result.marks = itemsOf<Marks>(m_placed.bits);
    markDeclarations();
    markOmitted();
}

MarkedDefinition DefinitionMarker::mark()
{
    markElements();
    return take();
}

void DefinitionMarker::markElements()
{
    m_bits.forgetElements();
    markSupplies();
    for (const Occurrence &target : m_definition.writes)
        markWrites(target, MarkDriver);
    markCalls();
    markPins();
}

MarkedDefinition DefinitionMarker::take()
{
    for (Border &border : m_result.borders)
        sortPins(&border.pins);
    m_result.connections.shrink_to_fit();
    return std::move(m_result);
}

void DefinitionMarker::markDeclarations()
{
    for (const PlacedNet &net : m_placed.nets) {
        if (net.isExcluded)
            itemAt(m_result.marks, net.bit) |= MarkBoth;
    }
    for (const PlacedVariable &placed : m_placed.variables) {
        if (placed.variable->isDrivenByConstant)
            markBits(placed.bits(), MarkDriver);
        else if (placed.variable->isTied)
            markBits(placed.bits(), MarkOut);
    }
}

void DefinitionMarker::markSupplies()
{
    for (const Occurrence &supply : m_definition.supplies) {
        forEachReference(supply, [this](const Reference &reference) {
            const PlacedVariable *net =
                reference.isHierarchical() ? nullptr : m_bits.netOf(reference);
            if (net && attribute(elementOf(*net), "loc") == attribute(reference.node, "loc"))
                markBits(net->bits(), MarkBoth);
        });
    }
}

pugi::xml_node DefinitionMarker::elementOf(const PlacedVariable &variable) const
{
    return itemAt(m_definition.variableElements, variable.variable - m_definition.variables.data());
}

void DefinitionMarker::markOmitted()
{
    OmittedTargets targets = omittedTargetsOf(m_placed);
    for (const BitRange &bits : targets.bits)
        markBits(bits, MarkDriver);
    m_result.omittedElsewhere = std::move(targets.elsewhere);
}

void DefinitionMarker::markCalls()
{
    for (const Occurrence &call : m_definition.calls) {
        const std::vector<bool> written = m_design.writtenArguments(m_definition, call);
        auto isWritten = written.begin();
        for (const pugi::xml_node &argument : call.node.children("arg")) {
            ReadGuard::check();
            if (isWritten == written.end())
                break;
            if (*isWritten++)
                markWrites({argument.first_child(), call.scope}, MarkDriver);
        }
    }
}

void DefinitionMarker::markWrites(const Occurrence &target, quint8 marks)
{
    forEachReference(target, [this, marks](const Reference &reference) {
        if (reference.isHierarchical()) {
            m_result.writesElsewhere.push_back(m_bits.elsewhere(reference));
            return;
        }
        m_bits.forEachRound(reference,
                            [this, marks](const BitRange &range) { markBits(range, marks); });
    });
}

void DefinitionMarker::markBits(const BitRange &range, quint8 marks)
{
    forEachBit(range, [this, marks](qint64 bit) { itemAt(m_result.marks, bit) |= marks; });
}

void DefinitionMarker::markPins()
{
    for (const Definition::InstanceElement &element : m_definition.instanceElements) {
        const InstanceItem &instance = itemAt(m_definition.instances, element.item);
        if (instance.definition && instance.definition->isForeign())
            m_result.borders.push_back({element.item, m_design.placeOf(element.node), {}});
        for (const pugi::xml_node &pin : element.node.children("port")) {
            ReadGuard::check();
            if (pin.first_child())
                markPin(element.item, pin);
        }
    }
}

void DefinitionMarker::markPin(int item, const pugi::xml_node &pin)
{
    const InstanceItem &instance = itemAt(m_definition.instances, item);
    const Definition *inner = instance.definition;
    const Occurrence expression{pin.first_child(), instance.scope};
    if (inner && inner->isForeign())
        return markBorderPin(item, pin);
    if (!inner || inner->role == Definition::Role::Stub) {
        const Occurrence connected{connectedPart(expression.node), expression.scope};
        if (isConnectable(connected.node))
            markWrites(connected, MarkOut);
        return;
    }
    const int port = inner->portOfPin(attribute(pin, "name"));
    if (port >= 0)
        markPort(item, port, expression);
}

/// A foreign unit drives its outputs and bidirectional ports, whatever is in it.
void DefinitionMarker::markBorderPin(int item, const pugi::xml_node &pin)
{
    const InstanceItem &instance = itemAt(m_definition.instances, item);
    BorderPin border;
    border.port = foreignPortOf(*instance.definition, pin);
    if (border.port < 0)
        return;
    const Occurrence connected{connectedPart(pin.first_child()), instance.scope};
    const PortDirection direction =
        itemAt(instance.definition->foreignUnit->ports, border.port).direction;
    border.width = m_design.connectedWidth(connected.node);
    border.isInput = direction != PortDirection::Output;
    if (direction != PortDirection::Input && isConnectable(connected.node))
        markWrites(connected, MarkDriver);
    if (border.isInput && border.width > 0 &&
        (is(connected.node, "concat") || isConnectable(connected.node))) {
        ConnectionBuilder builder(m_design.types(), m_bits, &m_result.connectedElsewhere);
        border.connection = builder.connect(item, border.port, connected);
    }
    m_result.borders.back().pins.push_back(std::move(border));
}

/// The index of the port of a foreign unit to which @p pin belongs; negative when there is none.
int DefinitionMarker::foreignPortOf(const Definition &stub, const pugi::xml_node &pin)
{
    const std::vector<DeclaredPort> &ports = stub.foreignUnit->ports;
    const std::string_view name = attribute(pin, "name");
    if (const int position = pinPosition(name); position > 0)
        return position <= countOf(ports) ? position - 1 : -1;
    auto names = m_foreignPorts.find(stub.foreignUnit);
    if (names == m_foreignPorts.end()) {
        QStringList declared;
        for (const DeclaredPort &port : ports)
            declared.append(port.name);
        names = m_foreignPorts.emplace(stub.foreignUnit, NamesAcross(declared)).first;
    }
    return names->second.find(decodedName(name));
}

/// Ports that the instance drives are writes; ports that may be driven from outside are
/// connections.
void DefinitionMarker::markPort(int item, int port, const Occurrence &expression)
{
    const Definition &inner = *itemAt(m_definition.instances, item).definition;
    const Variable &variable = itemAt(inner.variables, port);
    if (variable.isInterfacePort)
        return; // Already bound to an instance.
    const bool isTwoWay =
        variable.direction == Direction::Inout || variable.direction == Direction::Ref;
    if (variable.direction == Direction::Output || (isTwoWay && !inner.isNode())) {
        markWrites(expression, MarkDriver);
    } else if (inner.isNode()) {
        ConnectionBuilder builder(m_design.types(), m_bits, &m_result.connectedElsewhere);
        m_result.connections.push_back(builder.connect(item, port, expression));
        markDrivenWithin(m_result.connections.back());
    }
}

/// A bidirectional port that the instance drives is a driver here, and so is an input that the
/// instance writes. Something that only may drive, such as a pin of an unknown module, does not
/// count through an input.
void DefinitionMarker::markDrivenWithin(const Connection &connection)
{
    const Definition &inner = *itemAt(m_definition.instances, connection.item).definition;
    const MarkedDefinition &marked = itemAt(m_marked, inner.number);
    const PlacedVariable &port = itemAt(marked.placed->variables, connection.port);
    if (port.width == 0)
        return;
    const int driver = port.variable->direction == Direction::Input ? MarkWritten : MarkOut;
    qint64 offset = 0;
    for (const Segment &segment : connection.segments) {
        for (qint64 i = 0; i < segment.width && segment.kind == Segment::Kind::Own; ++i) {
            const quint8 marks = itemAt(marked.marks, port.bit + (offset + i) % port.width);
            if (marks & driver)
                itemAt(m_result.marks, segment.bit + i) |= quint8(MarkOut | (marks & MarkWritten));
        }
        offset += segment.width;
    }
}

} // namespace NETWEIR::Internal
