// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "pathresolver.h"

#include "interfacebindings.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/xml/attributes.h>
#include <netweir/internal/xml/definition.h>
#include <netweir/internal/xml/typetable.h>

#include <algorithm>
#include <charconv>
#include <optional>

namespace NETWEIR::Internal {

namespace {

/// The components of a path in the user's spelling.
std::vector<std::string> componentsOf(std::string_view dotted)
{
    std::vector<std::string> components;
    while (!dotted.empty()) {
        const auto dot = std::min(dotted.find('.'), dotted.size());
        components.push_back(decodedName(dotted.substr(0, dot)).toStdString());
        dotted.remove_prefix(std::min(dot + 1, dotted.size()));
    }
    return components;
}

/// A component such as "name[3]".
struct Element
{
    std::string_view array;
    int index = 0;
};

std::optional<Element> elementIn(std::string_view component)
{
    const auto bracket = component.rfind('[');
    if (bracket == std::string_view::npos || component.back() != ']')
        return std::nullopt;
    Element element;
    element.array = component.substr(0, bracket);
    const char *end = component.data() + component.size() - 1;
    const auto parsed = std::from_chars(component.data() + bracket + 1, end, element.index);
    if (parsed.ec != std::errc() || parsed.ptr != end)
        return std::nullopt;
    return element;
}

} // namespace

PathResolver::PathResolver(const TypeTable &types, const InstanceTree &tree,
                           const InterfaceBindings &bindings)
    : m_types(types)
    , m_tree(tree)
    , m_bindings(bindings)
{
}

/// As the language has it: the first name is looked for in the scope itself and then further and
/// further out.
InstanceScope PathResolver::resolve(const InstanceScope &from, std::string_view dotted) const
{
    const std::vector<std::string> path = componentsOf(dotted);
    for (InstanceScope start = from; start.instance >= 0; start = around(start.instance)) {
        const InstanceScope found = resolveWithin(start, path);
        if (found.instance >= 0)
            return found;
    }
    return {};
}

InstanceVariable PathResolver::netAt(const InstanceScope &from, std::string_view dotted,
                                     std::string_view name) const
{
    const InstanceScope owner = resolve(from, dotted);
    if (owner.instance < 0)
        return {};
    const Definition &definition = m_tree.definitionOf(owner.instance);
    const Symbol symbol = itemAt(definition.scopes, owner.scope).find(name);
    if (symbol.kind != Symbol::Kind::Variable || !itemAt(definition.variables, symbol.index).isNet)
        return {};
    return {owner.instance, symbol.index};
}

/// From a scope to the scope, instance or interface that it holds under that name.
InstanceScope PathResolver::step(const InstanceScope &from, const std::string &component) const
{
    const Symbol symbol =
        itemAt(m_tree.definitionOf(from.instance).scopes, from.scope).find(component);
    switch (symbol.kind) {
    case Symbol::Kind::Scope:
        return {from.instance, symbol.index};
    case Symbol::Kind::Instance:
        return {m_tree.childOf(from.instance, symbol.index, 0), 0};
    case Symbol::Kind::Variable:
        return boundTo(from.instance, symbol.index, 0);
    case Symbol::Kind::Routine:
        return {};
    case Symbol::Kind::None:
        break;
    }
    return stepToElement(from, component);
}

/// The same for an element of an array of instances or interfaces.
InstanceScope PathResolver::stepToElement(const InstanceScope &from,
                                          const std::string &component) const
{
    const std::optional<Element> element = elementIn(component);
    if (!element)
        return {};
    const Definition &definition = m_tree.definitionOf(from.instance);
    const Symbol symbol = itemAt(definition.scopes, from.scope).find(element->array);
    if (symbol.kind == Symbol::Kind::Instance) {
        const InstanceItem &item = itemAt(definition.instances, symbol.index);
        const qint64 position = item.positionOf(element->index);
        return {m_tree.childOf(from.instance, symbol.index, position), 0};
    }
    if (symbol.kind != Symbol::Kind::Variable)
        return {};
    const DataType &type = m_types.at(itemAt(definition.variables, symbol.index).type);
    const qint64 toLeft = qint64(element->index) - type.left;
    return boundTo(from.instance, symbol.index, type.left > type.right ? -toLeft : toLeft);
}

InstanceScope PathResolver::walk(InstanceScope from, const std::vector<std::string> &path,
                                 int first) const
{
    for (int i = first; i < countOf(path) && from.instance >= 0; ++i) {
        ReadGuard::check();
        from = step(from, itemAt(path, i));
    }
    return from;
}

/// Looks for a path in the instance of @p from alone: in the scopes outwards, then behind the name
/// of its module.
InstanceScope PathResolver::resolveWithin(const InstanceScope &from,
                                          const std::vector<std::string> &path) const
{
    const Definition &definition = m_tree.definitionOf(from.instance);
    for (int scope = from.scope; scope >= 0; scope = itemAt(definition.scopes, scope).parent) {
        ReadGuard::check();
        const InstanceScope found = walk({from.instance, scope}, path, 0);
        if (found.instance >= 0)
            return found;
    }
    if (path.empty() || QString::fromStdString(path.front()) != definition.sourceName)
        return {};
    return walk({from.instance, 0}, path, 1);
}

/// The interface at @p position of those that an interface port is bound to.
InstanceScope PathResolver::boundTo(int instance, int port, qint64 position) const
{
    const std::vector<int> *bound = m_bindings.find(instance, port);
    if (!bound || position < 0 || position >= countOf(*bound))
        return {};
    return {itemAt(*bound, position), 0};
}

/// The scope that holds an instance.
InstanceScope PathResolver::around(int instance) const
{
    const int parent = m_tree.at(instance).parent;
    return parent < 0 ? InstanceScope() : InstanceScope{parent, m_tree.itemOf(instance).scope};
}

} // namespace NETWEIR::Internal
