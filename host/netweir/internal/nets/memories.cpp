// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "memories.h"

#include "pathresolver.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/xml/attributes.h>
#include <netweir/internal/xml/elaborateddesign.h>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

bool holds(const std::vector<std::string> &paths, const std::string &path)
{
    return std::find(paths.begin(), paths.end(), path) != paths.end();
}

/// Calls @p visit for the operands of all computed indexes in @p definition: its own variables or
/// those of other nodes.
void forEachIndexed(const Definition &definition, bool isElsewhere,
                    const std::function<void(const Reference &)> &visit)
{
    for (const Occurrence &selection : definition.computedIndexes) {
        forEachReference(selection, [isElsewhere, &visit](const Reference &reference) {
            if (reference.isHierarchical() == isElsewhere)
                visit(reference);
        });
    }
}

} // namespace

void Memories::add(const Variable &variable, const Reference &selected)
{
    std::string path;
    for (const pugi::xml_node &step : selected.steps) {
        if (is(step, "structsel"))
            path = memberPath(path, attribute(step, "name"));
    }
    std::vector<std::string> &paths = m_paths[&variable];
    if (!holds(paths, path))
        paths.push_back(path);
}

bool Memories::contains(const Variable &variable, const std::string &path) const
{
    const auto found = m_paths.find(&variable);
    return found != m_paths.end() && holds(found->second, path);
}

Memories findMemories(const ElaboratedDesign &design)
{
    Memories memories;
    for (const Definition *definition : design.bottomUp()) {
        forEachIndexed(*definition, false, [&memories, definition](const Reference &reference) {
            const Symbol symbol = definition->find(reference.scope, reference.name());
            if (symbol.kind == Symbol::Kind::Variable)
                memories.add(itemAt(definition->variables, symbol.index), reference);
        });
    }
    return memories;
}

void addMemoriesElsewhere(const InstanceTree &tree, const PathResolver &paths, Memories *memories)
{
    for (int instance = 0; instance < tree.size(); ++instance) {
        forEachIndexed(tree.definitionOf(instance), true, [&](const Reference &reference) {
            const InstanceVariable net =
                paths.netAt({instance, reference.scope}, reference.path(), reference.name());
            if (net.instance >= 0)
                memories->add(itemAt(tree.definitionOf(net.instance).variables, net.variable),
                              reference);
        });
    }
}

std::string memberPath(const std::string &path, std::string_view member)
{
    return path.empty() ? std::string(member) : path + '.' + std::string(member);
}

} // namespace NETWEIR::Internal
