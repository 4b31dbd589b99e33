// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "instancemarker.h"

#include "instancetree.h"
#include "interfacebindings.h"
#include "layout.h"
#include "markeddefinition.h"
#include "pathresolver.h"

#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/xml/elaborateddesign.h>

#include <algorithm>

namespace NETWEIR::Internal {

InstanceMarker::InstanceMarker(const Inputs &inputs, InstanceMarks *marks)
    : m_inputs(inputs)
    , m_marks(marks)
{
}

void InstanceMarker::mark()
{
    for (const PlacedVariable &placed : definitionOf(0).placed->variables) {
        const Direction direction = placed.variable->direction;
        if (direction != Direction::None && direction != Direction::Output)
            markOut(0, placed.bits());
    }
    markInstances();
}

void InstanceMarker::mark(const DrivenPorts &driven)
{
    for (const PlacedVariable &placed : definitionOf(0).placed->variables) {
        const auto port = driven.constFind(placed.variable->name);
        if (placed.variable->direction != Direction::None && port != driven.constEnd())
            markPort(placed, *port);
    }
    markInstances();
}

/// Marks the bits of a port of the first instance. The first entry of @p driven is the leftmost
/// bit; a single one holds for all.
void InstanceMarker::markPort(const PlacedVariable &port, const std::vector<bool> &driven)
{
    if (driven == std::vector<bool>{true})
        return markOut(0, port.bits());
    quint8 *marks = m_marks->at(0, port.bit + port.width);
    for (qint64 i = 0; i < std::min<qint64>(port.width, countOf(driven)); ++i) {
        ReadGuard::check();
        --marks;
        if (driven[std::size_t(i)])
            *marks |= MarkOut;
    }
}

void InstanceMarker::markInstances()
{
    const int instances = m_inputs.tree.size();
    for (int instance = 0; instance < instances; ++instance) {
        ReadGuard::check();
        markWritesElsewhere(instance);
        markOmittedElsewhere(instance);
    }
    for (const InterfaceBinding &binding : m_inputs.bindings.all())
        markModports(binding);
    // Parents come first. Interfaces come before their siblings, whose ports may be connected to
    // their members.
    for (int instance = 0; instance < instances; ++instance) {
        ReadGuard::check();
        markConnections(instance, true);
        markConnections(instance, false);
    }
}

void InstanceMarker::markWritesElsewhere(int instance)
{
    for (const ElsewhereReference &reference : definitionOf(instance).writesElsewhere) {
        const Target target = targetOf(instance, reference);
        if (target.instance >= 0)
            markOut(target.instance, target.range);
    }
}

void InstanceMarker::markOmittedElsewhere(int instance)
{
    for (const OmittedWrite &write : definitionOf(instance).omittedElsewhere) {
        const InstanceVariable net =
            m_inputs.paths.netAt({instance, 0}, write.path.toStdString(), write.name.toStdString());
        if (net.instance >= 0)
            markOut(net.instance, variableOf(net.instance, net.variable).bits());
    }
}

/// The instance with the port drives the outputs of its modport.
void InstanceMarker::markModports(const InterfaceBinding &binding)
{
    ReadGuard::check();
    const PlacedVariable &port = variableOf(binding.instance, binding.port);
    const DataType *type = m_inputs.design.types().interfaceType(port.variable->type);
    for (const int interface : binding.interfaces) {
        if (type && interface >= 0)
            markModport(interface, type->modport);
    }
}

void InstanceMarker::markModport(int interface, std::string_view modport)
{
    const Definition &definition = m_inputs.tree.definitionOf(interface);
    const auto outputs = definition.modportOutputs.find(modport);
    if (outputs == definition.modportOutputs.end())
        return;
    for (const std::string_view name : outputs->second) {
        const Symbol symbol = definition.find(0, name);
        if (symbol.kind == Symbol::Kind::Variable)
            markOut(interface, variableOf(interface, symbol.index).bits());
    }
}

void InstanceMarker::markConnections(int instance, bool toInterfaces)
{
    const Definition &definition = m_inputs.tree.definitionOf(instance);
    for (const Connection &connection : definitionOf(instance).connections) {
        const InstanceItem &item = itemAt(definition.instances, connection.item);
        if ((item.definition->role == Definition::Role::Interface) != toInterfaces)
            continue;
        ReadGuard::check(item.count());
        for (qint64 position = 0; position < item.count(); ++position) {
            const int child = m_inputs.tree.childOf(instance, connection.item, position);
            markConnection(instance, connection, child);
        }
    }
}

/// The bits of a child's port are driven where the connected bits are driven.
void InstanceMarker::markConnection(int instance, const Connection &connection, int child)
{
    const PlacedVariable &port = variableOf(child, connection.port);
    const qint64 count = m_inputs.tree.itemOf(child).count();
    qint64 first = 0; // Each instance of an array gets its part.
    if (connection.width == port.width * count)
        first = (count - 1 - m_inputs.tree.at(child).position) * port.width;
    else if (connection.width != port.width)
        return markOut(child, port.bits());

    const qint64 last = first + port.width;
    quint8 *marks = m_marks->at(child, port.bit);
    auto segment = std::upper_bound(
        connection.segments.begin(), connection.segments.end(), first,
        [](qint64 bit, const Segment &candidate) { return bit < candidate.end(); });
    for (; segment != connection.segments.end() && segment->offset < last; ++segment) {
        const qint64 begin = std::max(first, segment->offset);
        const qint64 end = std::min(last, segment->end());
        const quint8 *source = begin < end ? marksOf(instance, *segment) : nullptr;
        ReadGuard::check();
        for (qint64 bit = begin; bit < end; ++bit) {
            if (!source || (source[bit - segment->offset] & MarkOut))
                marks[bit - first] |= MarkOut;
        }
    }
}

std::vector<bool> InstanceMarker::drivenBits(int parent, const BorderPin &pin) const
{
    std::vector<bool> driven(std::size_t(std::max<qint64>(pin.width, 1)), true);
    qint64 left = countOf(driven);
    for (const Segment &segment : pin.connection.segments) {
        const quint8 *source = marksOf(parent, segment);
        ReadGuard::check(segment.width);
        for (qint64 bit = 0; bit < segment.width && left > 0; ++bit)
            driven[std::size_t(--left)] = !source || (source[bit] & MarkOut);
    }
    return driven;
}

/// The marks of the bits of @p segment; null when all of them are driven.
const quint8 *InstanceMarker::marksOf(int instance, const Segment &segment) const
{
    if (segment.kind == Segment::Kind::Driven)
        return nullptr;
    if (segment.kind == Segment::Kind::Own)
        return m_marks->at(instance, segment.bit);
    const Target target =
        targetOf(instance, itemAt(definitionOf(instance).connectedElsewhere, segment.reference));
    const bool isWithin = target.range.low + segment.width <= target.range.end;
    return target.instance >= 0 && isWithin ? m_marks->at(target.instance, target.range.low)
                                            : nullptr;
}

/// The bits of a hierarchical reference in @p instance.
InstanceMarker::Target InstanceMarker::targetOf(int instance,
                                                const ElsewhereReference &reference) const
{
    const InstanceVariable net =
        m_inputs.paths.netAt({instance, reference.scope}, reference.path, reference.name);
    if (net.instance < 0)
        return {};
    const PlacedVariable &placed = variableOf(net.instance, net.variable);
    return {net.instance, m_inputs.layout.locate(placed, reference.selections)};
}

void InstanceMarker::markOut(int instance, const BitRange &range)
{
    quint8 *marks = m_marks->at(instance);
    forEachBit(range, [marks](qint64 bit) { marks[bit] |= MarkOut; });
}

const MarkedDefinition &InstanceMarker::definitionOf(int instance) const
{
    return itemAt(m_inputs.marked, m_inputs.tree.definitionOf(instance).number);
}

const PlacedVariable &InstanceMarker::variableOf(int instance, int variable) const
{
    return itemAt(definitionOf(instance).placed->variables, variable);
}

} // namespace NETWEIR::Internal
