// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "interfacebindings.h"

#include "instancetree.h"
#include "pathresolver.h"

#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/xml/elaborateddesign.h>

#include <algorithm>
#include <utility>

namespace NETWEIR::Internal {

namespace {

/// A pin of an instance that is an interface port.
struct BoundPin
{
    int item = 0;
    int port = 0;
    const InterfacePin *pin = nullptr;
};

/// Interface instances from the left: those of one item, which are side by side in the tree, or
/// those of a binding.
struct InterfaceRange
{
    qint64 count = 0;
    int first = -1;                          ///< Negative when they have no place in the tree.
    const std::vector<int> *bound = nullptr; ///< Null for those of an item.

    int at(qint64 position) const
    {
        if (bound)
            return itemAt(*bound, position);
        return first < 0 ? -1 : int(first + position);
    }
};

/// The interface pins of all instances in @p definition, in the order of the instances and of their
/// ports.
std::vector<BoundPin> boundPinsOf(const Definition &definition)
{
    std::vector<BoundPin> pins;
    for (const InterfacePin &pin : definition.interfacePins) {
        const Definition &inner = *itemAt(definition.instances, pin.item).definition;
        const int port = inner.portOfPin(pin.port);
        if (port >= 0 && itemAt(inner.variables, port).isInterfacePort)
            pins.push_back({pin.item, port, &pin});
    }
    std::stable_sort(pins.begin(), pins.end(), [](const BoundPin &a, const BoundPin &b) {
        return std::make_pair(a.item, a.port) < std::make_pair(b.item, b.port);
    });
    return pins;
}

bool isBefore(const InterfaceBinding &binding, const std::pair<int, int> &instanceAndPort)
{
    return std::make_pair(binding.instance, binding.port) < instanceAndPort;
}

/// Binds one instance after another. Keeps the pins of all definitions meanwhile.
class InterfaceBinder
{
public:
    InterfaceBinder(const ElaboratedDesign &design, const InstanceTree &tree)
        : m_types(design.types())
        , m_tree(tree)
        , m_paths(m_types, tree, m_bindings)
        , m_pins(design.listByDefinition<std::vector<BoundPin>>())
    {
        for (const Definition *definition : design.bottomUp())
            itemAt(m_pins, definition->number) = boundPinsOf(*definition);
    }

    InterfaceBindings bindAll()
    {
        for (int instance = 1; instance < m_tree.size(); ++instance)
            bindPorts(instance);
        return std::move(m_bindings);
    }

private:
    void bindPorts(int instance);
    InterfaceRange interfacesOf(int instance, const InterfacePin &pin) const;
    InterfaceRange elementsOf(const InstanceScope &owner, const Symbol &symbol) const;
    bool isRising(const Definition &definition, const Symbol &symbol) const;

    const TypeTable &m_types;
    const InstanceTree &m_tree;
    InterfaceBindings m_bindings;
    const PathResolver m_paths;
    std::vector<std::vector<BoundPin>> m_pins; ///< Pins by the number of the definition.
};

void InterfaceBinder::bindPorts(int instance)
{
    const Instance &node = m_tree.at(instance);
    const std::vector<BoundPin> &pins = itemAt(m_pins, m_tree.definitionOf(node.parent).number);
    auto pin =
        std::lower_bound(pins.begin(), pins.end(), node.item,
                         [](const BoundPin &candidate, int item) { return candidate.item < item; });
    for (; pin != pins.end() && pin->item == node.item; ++pin) {
        ReadGuard::check();
        const InterfaceRange interfaces = interfacesOf(node.parent, *pin->pin);
        const DataType &type = m_types.at(itemAt(node.definition->variables, pin->port).type);
        // Each element of an array of instances has its own element of an array of interfaces.
        const bool isShared = type.kind == DataType::Kind::UnpackedArray ||
                              interfaces.count != m_tree.itemOf(instance).count();
        std::vector<int> bound;
        if (!isShared)
            bound.push_back(interfaces.at(node.position));
        for (qint64 position = 0; isShared && position < interfaces.count; ++position)
            bound.push_back(interfaces.at(position));
        ReadGuard::check(countOf(bound));
        m_bindings.add({instance, pin->port, std::move(bound)});
    }
}

/// The interface instances to which @p pin of an instance in @p instance is connected. Valid until
/// the next binding is added.
InterfaceRange InterfaceBinder::interfacesOf(int instance, const InterfacePin &pin) const
{
    InstanceScope owner{instance, itemAt(m_tree.definitionOf(instance).instances, pin.item).scope};
    if (pin.isHierarchical)
        owner = m_paths.resolve(owner, pin.path);
    if (owner.instance < 0)
        return {};

    const Definition &definition = m_tree.definitionOf(owner.instance);
    const Symbol symbol = definition.find(owner.scope, pin.name);
    const InterfaceRange interfaces = elementsOf(owner, symbol);
    if (!pin.element)
        return interfaces;
    // Elements are counted from the lowest index.
    const qint64 position =
        isRising(definition, symbol) ? *pin.element : interfaces.count - 1 - *pin.element;
    if (position < 0 || position >= interfaces.count)
        return {};
    return {1, interfaces.at(position), nullptr};
}

/// The interfaces that @p symbol means: instances, or those to which an interface port is bound.
InterfaceRange InterfaceBinder::elementsOf(const InstanceScope &owner, const Symbol &symbol) const
{
    if (symbol.kind == Symbol::Kind::Instance) {
        const InstanceItem &item =
            itemAt(m_tree.definitionOf(owner.instance).instances, symbol.index);
        return {item.count(), m_tree.childOf(owner.instance, symbol.index, 0), nullptr};
    }
    if (symbol.kind != Symbol::Kind::Variable)
        return {};
    const std::vector<int> *bound = m_bindings.find(owner.instance, symbol.index);
    return bound ? InterfaceRange{countOf(*bound), -1, bound} : InterfaceRange();
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
    const auto wanted = std::make_pair(instance, port);
    const auto binding = std::lower_bound(m_bindings.begin(), m_bindings.end(), wanted, isBefore);
    const bool isFound =
        binding != m_bindings.end() && std::make_pair(binding->instance, binding->port) == wanted;
    return isFound ? &binding->interfaces : nullptr;
}

InterfaceBindings bindInterfaces(const ElaboratedDesign &design, const InstanceTree &tree)
{
    return InterfaceBinder(design, tree).bindAll();
}

} // namespace NETWEIR::Internal
