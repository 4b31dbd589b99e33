// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "instancetree.h"

#include <netweir/hierachy.h>
#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/xml/attributes.h>
#include <netweir/netlistbuilder.h>

#include <algorithm>
#include <charconv>

namespace NETWEIR::Internal {

namespace {

constexpr std::size_t MostInstances = std::size_t(1) << 24;

bool is(const pugi::xml_node &node, std::string_view tag)
{
    return tag == node.name();
}

std::vector<std::string> componentsOf(std::string_view dotted)
{
    std::vector<std::string> components;
    while (!dotted.empty()) {
        const std::size_t dot = std::min(dotted.find('.'), dotted.size());
        components.push_back(decodedName(dotted.substr(0, dot)).toStdString());
        dotted.remove_prefix(std::min(dot + 1, dotted.size()));
    }
    return components;
}

template <typename Visit>
void forEachBit(const BitRange &range, Visit visit)
{
    for (qint64 low = range.low; low <= range.high; low += range.step) {
        for (qint64 bit = low; bit < std::min(low + range.width, range.end); ++bit)
            visit(bit);
    }
}

} // namespace

InstanceTree::InstanceTree(ElaboratedDesign *design, const Layout &layout)
    : m_design(design)
    , m_layout(layout)
{
}

bool InstanceTree::build()
{
    for (Definition *definition : m_design->bottomUp())
        listChildren(definition);
    Instance top;
    top.definition = m_design->top();
    m_instances.push_back(top);
    for (std::size_t i = 0; i < m_instances.size(); ++i) {
        const qint64 children = m_instances[i].definition->childCount;
        ReadGuard::check(1 + children);
        if (m_instances.size() + std::size_t(children) > MostInstances)
            return false;
        addChildren(int(i));
    }
    for (std::size_t i = 1; i < m_instances.size(); ++i)
        bindPorts(int(i));
    return true;
}

void InstanceTree::findMemoriesElsewhere()
{
    for (std::size_t i = 0; i < m_instances.size(); ++i) {
        for (const Occurrence &selection : m_instances[i].definition->computedIndexes) {
            forEachReference(selection, [this, i](const Reference &reference) {
                const Target target =
                    reference.isHierarchical() ? targetOf(int(i), reference) : Target();
                if (target.variable)
                    m_layout.addMemory(target.variable, reference);
            });
        }
    }
}

bool InstanceTree::markInstances()
{
    qint64 bits = 0;
    for (Instance &instance : m_instances) {
        instance.firstMark = bits;
        bits += instance.definition->bits;
        if (bits > MostBits)
            return false;
    }
    m_marks.reserve(std::size_t(bits));
    for (const Instance &instance : m_instances) {
        const std::vector<quint8> &marks = instance.definition->marks;
        m_marks.insert(m_marks.end(), marks.begin(), marks.end());
    }

    for (const Variable &variable : m_design->top()->variables) {
        if (variable.isNet && variable.direction != Direction::None &&
            variable.direction != Direction::Output)
            markVariable(0, variable);
    }
    for (std::size_t i = 0; i < m_instances.size(); ++i) {
        ReadGuard::check();
        markWritesElsewhere(int(i));
        markModports(int(i));
    }
    // Parents come first. Interfaces come before their siblings, whose ports may be connected to
    // members of them.
    for (std::size_t i = 0; i < m_instances.size(); ++i) {
        ReadGuard::check();
        markConnections(int(i), true);
        markConnections(int(i), false);
    }
    return true;
}

void InstanceTree::stamp(NetlistBuilder *builder) const
{
    std::vector<Hierachy *> nodes(m_instances.size());
    std::vector<NetMarks> busMarks;
    for (std::size_t i = 0; i < m_instances.size(); ++i) {
        const Instance &instance = m_instances[i];
        Hierachy *node = builder->top();
        if (instance.parent >= 0) {
            node = builder->addHierachy(nodes[std::size_t(instance.parent)], localName(instance),
                                        instance.definition->sourceName);
        }
        nodes[i] = node;
        const quint8 *marks = m_marks.data() + instance.firstMark;
        const auto marksAt = [marks](qint64 bit) {
            return NetMarks{bool(marks[bit] & MarkIn), bool(marks[bit] & MarkOut)};
        };
        for (const Leaf &leaf : instance.definition->leafs) {
            if (!leaf.isBus) {
                builder->addNet(node, leaf.name, marksAt(leaf.bit));
                continue;
            }
            busMarks.clear();
            for (qint64 bit = leaf.bit + leaf.width() - 1; bit >= leaf.bit; --bit)
                busMarks.push_back(marksAt(bit));
            builder->addBus(node, leaf.name, leaf.left, leaf.right, busMarks);
        }
    }
}

void InstanceTree::listChildren(Definition *definition)
{
    definition->childOffsets.reserve(definition->instances.size());
    for (std::size_t item = 0; item < definition->instances.size(); ++item) {
        const InstanceItem &instance = definition->instances[item];
        const bool isNode = instance.definition && instance.definition->isNode();
        definition->childOffsets.push_back(isNode ? definition->childCount : -1);
        if (!isNode)
            continue;
        definition->childCount += instance.count();
        for (const pugi::xml_node &pin : instance.node.children("port")) {
            const int port = instance.definition->portOfPin(attribute(pin, "name"));
            if (port >= 0 && instance.definition->variables[std::size_t(port)].isInterfacePort) {
                definition->interfacePins.push_back(
                    {int(item), port, {pin.first_child(), instance.scope}});
            }
        }
    }
}

void InstanceTree::addChildren(int instance)
{
    const Definition *definition = m_instances[std::size_t(instance)].definition;
    m_instances[std::size_t(instance)].firstChild = int(m_instances.size());
    for (std::size_t item = 0; item < definition->instances.size(); ++item) {
        if (definition->childOffsets[item] < 0)
            continue;
        const InstanceItem &source = definition->instances[item];
        for (qint64 position = 0; position < source.count(); ++position) {
            Instance child;
            child.definition = source.definition;
            child.parent = instance;
            child.item = int(item);
            child.position = position;
            m_instances.push_back(std::move(child));
        }
    }
}

void InstanceTree::bindPorts(int index)
{
    Instance &instance = m_instances[std::size_t(index)];
    const Definition &outer = *m_instances[std::size_t(instance.parent)].definition;
    const InstanceItem &item = outer.instances[std::size_t(instance.item)];
    auto pin = std::lower_bound(
        outer.interfacePins.begin(), outer.interfacePins.end(), instance.item,
        [](const InterfacePin &candidate, int wanted) { return candidate.item < wanted; });
    for (; pin != outer.interfacePins.end() && pin->item == instance.item; ++pin) {
        ReadGuard::check();
        std::vector<int> interfaces = interfacesOf(instance.parent, pin->expression);
        const DataType &type =
            m_design->types().at(instance.definition->variables[std::size_t(pin->port)].type);
        // Each of an array of instances has its own of an array of interfaces.
        const bool isShared =
            type.kind == DataType::Kind::UnpackedArray || qint64(interfaces.size()) != item.count();
        if (!isShared)
            interfaces = {interfaces[std::size_t(instance.position)]};
        instance.bindings.push_back({pin->port, std::move(interfaces)});
    }
}

/// The interface instances that an expression connected to an interface port names.
std::vector<int> InstanceTree::interfacesOf(int index, const Occurrence &expression) const
{
    pugi::xml_node node = expression.node;
    std::optional<qint64> element;
    if (is(node, "arraysel")) {
        element = constantValue(node.last_child());
        node = node.first_child();
    }
    Place place{index, expression.scope};
    if (is(node, "varxref"))
        place = resolve(place, attribute(node, "dotted"));
    if (place.instance < 0)
        return {};

    const Definition &definition = *m_instances[std::size_t(place.instance)].definition;
    const Symbol symbol = definition.find(place.scope, attribute(node, "name"));
    std::vector<int> interfaces;
    bool isRising = false;
    if (symbol.kind == Symbol::Kind::Instance) {
        const InstanceItem &item = definition.instances[std::size_t(symbol.index)];
        for (qint64 position = 0; position < item.count(); ++position)
            interfaces.push_back(childOf(place.instance, symbol.index, position));
        isRising = item.left <= item.right;
    } else if (symbol.kind == Symbol::Kind::Variable) {
        if (const std::vector<int> *bound = bindingOf(place.instance, symbol.index))
            interfaces = *bound;
        const DataType &type =
            m_design->types().at(definition.variables[std::size_t(symbol.index)].type);
        isRising = type.left <= type.right;
    }
    if (!element)
        return interfaces;
    // Elements are counted from the lowest index on.
    const qint64 position = isRising ? *element : qint64(interfaces.size()) - 1 - *element;
    if (position < 0 || position >= qint64(interfaces.size()))
        return {};
    return {interfaces[std::size_t(position)]};
}

const std::vector<int> *InstanceTree::bindingOf(int instance, int port) const
{
    for (const Binding &binding : m_instances[std::size_t(instance)].bindings) {
        if (binding.port == port)
            return &binding.instances;
    }
    return nullptr;
}

int InstanceTree::childOf(int instance, int item, qint64 position) const
{
    const Instance &parent = m_instances[std::size_t(instance)];
    const InstanceItem &source = parent.definition->instances[std::size_t(item)];
    const qint64 offset = parent.definition->childOffsets[std::size_t(item)];
    if (offset < 0 || position < 0 || position >= source.count())
        return -1;
    return int(parent.firstChild + offset + position);
}

/// From a scope to the scope, instance or interface that it holds under that name.
InstanceTree::Place InstanceTree::step(const Place &from, const std::string &component) const
{
    const Definition &definition = *m_instances[std::size_t(from.instance)].definition;
    const auto &symbols = definition.scopes[std::size_t(from.scope)].symbols;
    const auto found = symbols.find(component);
    if (found == symbols.end())
        return stepToElement(from, component);
    const Symbol symbol = found->second;
    if (symbol.kind == Symbol::Kind::Scope)
        return {from.instance, symbol.index};
    if (symbol.kind == Symbol::Kind::Instance)
        return {childOf(from.instance, symbol.index, 0), 0};
    if (symbol.kind == Symbol::Kind::Variable) {
        const std::vector<int> *bound = bindingOf(from.instance, symbol.index);
        if (bound && !bound->empty())
            return {bound->front(), 0};
    }
    return {};
}

/// The same for "name[3]", an element of an array of instances or interfaces.
InstanceTree::Place InstanceTree::stepToElement(const Place &from,
                                                const std::string &component) const
{
    const std::size_t bracket = component.rfind('[');
    if (bracket == std::string::npos || component.back() != ']')
        return {};
    int index = 0;
    const char *end = component.data() + component.size() - 1;
    const auto parsed = std::from_chars(component.data() + bracket + 1, end, index);
    if (parsed.ec != std::errc() || parsed.ptr != end)
        return {};

    const Definition &definition = *m_instances[std::size_t(from.instance)].definition;
    const auto &symbols = definition.scopes[std::size_t(from.scope)].symbols;
    const auto found = symbols.find(std::string_view(component).substr(0, bracket));
    if (found == symbols.end())
        return {};
    const Symbol symbol = found->second;
    if (symbol.kind == Symbol::Kind::Instance) {
        const InstanceItem &item = definition.instances[std::size_t(symbol.index)];
        return {childOf(from.instance, symbol.index, item.positionOf(index)), 0};
    }
    if (symbol.kind == Symbol::Kind::Variable) {
        const DataType &type =
            m_design->types().at(definition.variables[std::size_t(symbol.index)].type);
        const std::vector<int> *bound = bindingOf(from.instance, symbol.index);
        const qint64 position = qAbs(qint64(index) - type.left);
        if (bound && position < qint64(bound->size()))
            return {(*bound)[std::size_t(position)], 0};
    }
    return {};
}

InstanceTree::Place InstanceTree::walk(Place from, const std::vector<std::string> &path,
                                       std::size_t first) const
{
    for (std::size_t i = first; i < path.size() && from.instance >= 0; ++i) {
        ReadGuard::check();
        from = step(from, path[i]);
    }
    return from;
}

/// Follows a dotted path as the language does: the first name is looked for in the scope itself and
/// then further and further out.
InstanceTree::Place InstanceTree::resolve(const Place &from, std::string_view dotted) const
{
    const std::vector<std::string> path = componentsOf(dotted);
    Place place = from;
    while (place.instance >= 0) {
        const Instance &instance = m_instances[std::size_t(place.instance)];
        for (int scope = place.scope; scope >= 0;
             scope = instance.definition->scopes[std::size_t(scope)].parent) {
            ReadGuard::check();
            const Place found = walk({place.instance, scope}, path, 0);
            if (found.instance >= 0)
                return found;
        }
        const QString first = QString::fromStdString(path.empty() ? std::string() : path.front());
        if (first == instance.definition->sourceName) {
            const Place found = walk({place.instance, 0}, path, 1);
            if (found.instance >= 0)
                return found;
        }
        place = {instance.parent, 0};
        if (instance.parent >= 0) {
            const Definition &outer = *m_instances[std::size_t(instance.parent)].definition;
            place.scope = outer.instances[std::size_t(instance.item)].scope;
        }
    }
    return {};
}

/// The net that a hierarchical reference in @p instance names.
InstanceTree::Target InstanceTree::targetOf(int instance, const Reference &reference) const
{
    const Place place = resolve({instance, reference.scope}, attribute(reference.node, "dotted"));
    if (place.instance < 0)
        return {};
    Definition *definition = m_instances[std::size_t(place.instance)].definition;
    const auto &symbols = definition->scopes[std::size_t(place.scope)].symbols;
    const auto found = symbols.find(attribute(reference.node, "name"));
    if (found == symbols.end() || found->second.kind != Symbol::Kind::Variable)
        return {};
    Variable *variable = &definition->variables[std::size_t(found->second.index)];
    return variable->isNet ? Target{place.instance, variable} : Target();
}

void InstanceTree::markWritesElsewhere(int index)
{
    const Definition &definition = *m_instances[std::size_t(index)].definition;
    if (definition.writesElsewhere.empty())
        return;
    const IndexEvaluator indexes(definition, m_design->types());
    for (const Reference &reference : definition.writesElsewhere) {
        const Target target = targetOf(index, reference);
        if (!target.variable)
            continue;
        quint8 *marks = m_marks.data() + m_instances[std::size_t(target.instance)].firstMark;
        forEachBit(m_layout.locate(*target.variable, reference, indexes),
                   [marks](qint64 bit) { marks[bit] |= MarkOut; });
    }
}

/// What a modport gives as an output is driven by the instance that has the port.
void InstanceTree::markModports(int index)
{
    const Instance &instance = m_instances[std::size_t(index)];
    for (const Binding &binding : instance.bindings) {
        const DataType *type = m_design->types().interfaceType(
            instance.definition->variables[std::size_t(binding.port)].type);
        for (const int bound : binding.instances) {
            if (!type || bound < 0)
                continue;
            const Definition &interface = *m_instances[std::size_t(bound)].definition;
            const auto outputs = interface.modportOutputs.find(type->modport);
            if (outputs == interface.modportOutputs.end())
                continue;
            for (const std::string_view name : outputs->second) {
                const Symbol symbol = interface.find(0, name);
                if (symbol.kind == Symbol::Kind::Variable &&
                    interface.variables[std::size_t(symbol.index)].isNet)
                    markVariable(bound, interface.variables[std::size_t(symbol.index)]);
            }
        }
    }
}

void InstanceTree::markConnections(int index, bool interfaces)
{
    const Definition &definition = *m_instances[std::size_t(index)].definition;
    for (const Connection &connection : definition.connections) {
        const InstanceItem &item = definition.instances[std::size_t(connection.item)];
        if ((item.definition->role == Definition::Role::Interface) != interfaces)
            continue;
        ReadGuard::check(item.count());
        for (qint64 position = 0; position < item.count(); ++position)
            markConnection(index, connection, childOf(index, connection.item, position));
    }
}

/// The port of a child is driven where what it is connected to is.
void InstanceTree::markConnection(int index, const Connection &connection, int child)
{
    const Instance &inner = m_instances[std::size_t(child)];
    const Variable &port = inner.definition->variables[std::size_t(connection.port)];
    if (!port.isNet)
        return;
    const qint64 portWidth = m_layout.widthOf(port);
    const InstanceItem &item =
        m_instances[std::size_t(index)].definition->instances[std::size_t(connection.item)];
    qint64 first = 0;
    if (connection.width == portWidth * item.count())
        first = (item.count() - 1 - inner.position) * portWidth;
    else if (connection.width != portWidth)
        return markVariable(child, port);

    qint64 offset = 0;
    quint8 *marks = m_marks.data() + inner.firstMark + port.bit;
    for (const Segment &segment : connection.segments) {
        const qint64 begin = std::max(first, offset);
        const qint64 end = std::min(first + portWidth, offset + segment.width);
        const quint8 *source = begin < end ? marksOf(index, segment) : nullptr;
        ReadGuard::check();
        for (qint64 bit = begin; bit < end; ++bit) {
            if (!source || (source[bit - offset] & MarkOut))
                marks[bit - first] |= MarkOut;
        }
        offset += segment.width;
    }
}

/// The marks of the bits of @p segment; null when all of them are driven.
const quint8 *InstanceTree::marksOf(int index, const Segment &segment) const
{
    if (segment.kind == Segment::Kind::Driven)
        return nullptr;
    const Instance &instance = m_instances[std::size_t(index)];
    if (segment.kind == Segment::Kind::Own)
        return m_marks.data() + instance.firstMark + segment.bit;

    const Reference &reference = instance.definition->connectedElsewhere[std::size_t(segment.bit)];
    const Target target = targetOf(index, reference);
    if (!target.variable)
        return nullptr;
    const IndexEvaluator indexes(*instance.definition, m_design->types());
    const BitRange range = m_layout.locate(*target.variable, reference, indexes);
    if (range.low + segment.width > range.end)
        return nullptr;
    return m_marks.data() + m_instances[std::size_t(target.instance)].firstMark + range.low;
}

void InstanceTree::markVariable(int instance, const Variable &variable)
{
    quint8 *marks = m_marks.data() + m_instances[std::size_t(instance)].firstMark + variable.bit;
    const qint64 width = m_layout.widthOf(variable);
    for (qint64 bit = 0; bit < width; ++bit)
        marks[bit] |= MarkOut;
}

QString InstanceTree::localName(const Instance &instance) const
{
    const Definition &outer = *m_instances[std::size_t(instance.parent)].definition;
    const InstanceItem &item = outer.instances[std::size_t(instance.item)];
    QString name = outer.prefixOf(item.scope) + item.name;
    if (item.isArray)
        name += QStringLiteral("[%1]").arg(item.indexAt(instance.position));
    return name;
}

} // namespace NETWEIR::Internal
