// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "interfacebindings.h"

#include "instancetree.h"
#include "pathresolver.h"

#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/xml/attributes.h>
#include <netweir/internal/xml/elaborateddesign.h>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

/// An interface port of an instance and the expression that names the interface.
struct InterfacePin
{
    int item = 0;
    int port = 0;
    Occurrence expression;
};

/// The interface pins of all instances in @p definition, in the order of the instances.
std::vector<InterfacePin> interfacePinsOf(const Definition &definition)
{
    std::vector<InterfacePin> pins;
    for (int i = 0; i < countOf(definition.instances); ++i) {
        const InstanceItem &item = itemAt(definition.instances, i);
        if (item.firstChild < 0)
            continue;
        for (const pugi::xml_node &pin : item.node.children("port")) {
            const int port = item.definition->portOfPin(attribute(pin, "name"));
            if (port >= 0 && itemAt(item.definition->variables, port).isInterfacePort)
                pins.push_back({i, port, {pin.first_child(), item.scope}});
        }
    }
    return pins;
}

bool isBefore(const InterfaceBinding &binding, int instance)
{
    return binding.instance < instance;
}

/// Binds one instance after another. Keeps the pins of all definitions meanwhile.
class InterfaceBinder
{
public:
    InterfaceBinder(const ElaboratedDesign &design, const InstanceTree &tree)
        : m_types(design.types())
        , m_tree(tree)
        , m_paths(m_types, tree, m_bindings)
        , m_pins(design.listByDefinition<std::vector<InterfacePin>>())
    {
        for (const Definition *definition : design.bottomUp())
            itemAt(m_pins, definition->number) = interfacePinsOf(*definition);
    }

    InterfaceBindings bindAll()
    {
        for (int instance = 1; instance < m_tree.size(); ++instance)
            bindPorts(instance);
        return std::move(m_bindings);
    }

private:
    void bindPorts(int instance);
    std::vector<int> interfacesOf(int instance, const Occurrence &expression) const;
    std::vector<int> elementsOf(const InstanceScope &owner, const Symbol &symbol) const;
    bool isRising(const Definition &definition, const Symbol &symbol) const;

    const TypeTable &m_types;
    const InstanceTree &m_tree;
    InterfaceBindings m_bindings;
    const PathResolver m_paths;
    std::vector<std::vector<InterfacePin>> m_pins; ///< Pins by the number of the definition.
};

void InterfaceBinder::bindPorts(int instance)
{
    const Instance &node = m_tree.at(instance);
    const std::vector<InterfacePin> &pins = itemAt(m_pins, m_tree.definitionOf(node.parent).number);
    auto pin = std::lower_bound(
        pins.begin(), pins.end(), node.item,
        [](const InterfacePin &candidate, int item) { return candidate.item < item; });
    for (; pin != pins.end() && pin->item == node.item; ++pin) {
        ReadGuard::check();
        std::vector<int> interfaces = interfacesOf(node.parent, pin->expression);
        const DataType &type = m_types.at(itemAt(node.definition->variables, pin->port).type);
        // Each element of an array of instances has its own element of an array of interfaces.
        const bool isShared = type.kind == DataType::Kind::UnpackedArray ||
                              countOf(interfaces) != m_tree.itemOf(instance).count();
        if (!isShared)
            interfaces = {itemAt(interfaces, node.position)};
        m_bindings.add({instance, pin->port, std::move(interfaces)});
    }
}

/// The interface instances that an expression on an interface port names.
std::vector<int> InterfaceBinder::interfacesOf(int instance, const Occurrence &expression) const
{
    pugi::xml_node node = expression.node;
    std::optional<qint64> element;
    if (is(node, "arraysel")) {
        element = constantValue(node.last_child());
        node = node.first_child();
    }
    InstanceScope owner{instance, expression.scope};
    if (is(node, "varxref"))
        owner = m_paths.resolve(owner, attribute(node, "dotted"));
    if (owner.instance < 0)
        return {};

    const Definition &definition = m_tree.definitionOf(owner.instance);
    const Symbol symbol = definition.find(owner.scope, attribute(node, "name"));
    std::vector<int> interfaces = elementsOf(owner, symbol);
    if (!element)
        return interfaces;
    // Elements are counted from the lowest index.
    const qint64 position =
        isRising(definition, symbol) ? *element : countOf(interfaces) - 1 - *element;
    if (position < 0 || position >= countOf(interfaces))
        return {};
    return {itemAt(interfaces, position)};
}

/// The interfaces that @p symbol means: instances, or those to which an interface port is bound.
std::vector<int> InterfaceBinder::elementsOf(const InstanceScope &owner, const Symbol &symbol) const
{
    std::vector<int> interfaces;
    if (symbol.kind == Symbol::Kind::Instance) {
        const InstanceItem &item =
            itemAt(m_tree.definitionOf(owner.instance).instances, symbol.index);
        for (qint64 position = 0; position < item.count(); ++position)
            interfaces.push_back(m_tree.childOf(owner.instance, symbol.index, position));
    } else if (symbol.kind == Symbol::Kind::Variable) {
        if (const std::vector<int> *bound = m_bindings.find(owner.instance, symbol.index))
            interfaces = *bound;
    }
    return interfaces;
}

/// True when the leftmost element of @p symbol has the lowest index.
bool InterfaceBinder::isRising(const Definition &definition, const Symbol &symbol) const
{
    if (symbol.kind == Symbol::Kind::Instance) {
        const InstanceItem &item = itemAt(definition.instances, symbol.index);
        return item.left <= item.right;
    }
    if (symbol.kind != Symbol::Kind::Variable)
        return false;
    const DataType &type = m_types.at(itemAt(definition.variables, symbol.index).type);
    return type.left <= type.right;
}

} // namespace

void InterfaceBindings::add(InterfaceBinding binding)
{
    m_bindings.push_back(std::move(binding));
}

const std::vector<int> *InterfaceBindings::find(int instance, int port) const
{
    auto binding = std::lower_bound(m_bindings.begin(), m_bindings.end(), instance, isBefore);
    for (; binding != m_bindings.end() && binding->instance == instance; ++binding) {
        if (binding->port == port)
            return &binding->interfaces;
    }
    return nullptr;
}

InterfaceBindings bindInterfaces(const ElaboratedDesign &design, const InstanceTree &tree)
{
    return InterfaceBinder(design, tree).bindAll();
}

} // namespace NETWEIR::Internal
