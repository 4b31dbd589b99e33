// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "memories.h"

#include "pathresolver.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/xml/attributes.h>
#include <netweir/internal/xml/definition.h>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

bool holds(const std::vector<std::string> &paths, const std::string &path)
{
    return std::find(paths.begin(), paths.end(), path) != paths.end();
}

/// The path from the variable of @p selected to the array from which it selects an element.
std::string arrayPathOf(const Reference &selected)
{
    std::string path;
    for (const pugi::xml_node &step : selected.steps) {
        if (is(step, "structsel"))
            path = memberPath(path, attribute(step, "name"));
    }
    return path;
}

} // namespace

void Memories::addOf(const Definition &definition)
{
    const auto visit = [this, &definition](const Reference &reference) {
        if (reference.isHierarchical()) {
            m_elsewhere[&definition].push_back({reference.scope, std::string(reference.path()),
                                                std::string(reference.name()),
                                                arrayPathOf(reference)});
            return;
        }
        const Symbol symbol = definition.find(reference.scope, reference.name());
        if (symbol.kind == Symbol::Kind::Variable)
            add(itemAt(definition.variables, symbol.index), reference);
    };
    for (const Occurrence &selection : definition.computedIndexes)
        forEachReference(selection, visit);
}

bool Memories::addElsewhere(const InstanceTree &tree, const PathResolver &paths)
{
    bool isAdded = false;
    for (int instance = 0; instance < tree.size() && !m_elsewhere.empty(); ++instance) {
        const auto found = m_elsewhere.find(&tree.definitionOf(instance));
        if (found == m_elsewhere.end())
            continue;
        for (const ArrayElsewhere &array : found->second) {
            const InstanceVariable net =
                paths.netAt({instance, array.scope}, array.path, array.name);
            if (net.instance >= 0 &&
                add(itemAt(tree.definitionOf(net.instance).variables, net.variable), array.array))
                isAdded = true;
        }
    }
    return isAdded;
}

void Memories::add(const Variable &variable, const Reference &selected)
{
    add(variable, arrayPathOf(selected));
}

/// False when it is known already.
bool Memories::add(const Variable &variable, const std::string &path)
{
    std::vector<std::string> &paths = m_paths[&variable];
    if (holds(paths, path))
        return false;
    paths.push_back(path);
    return true;
}

bool Memories::contains(const Variable &variable, const std::string &path) const
{
    const auto found = m_paths.find(&variable);
    return found != m_paths.end() && holds(found->second, path);
}

std::string memberPath(const std::string &path, std::string_view member)
{
    return path.empty() ? std::string(member) : path + '.' + std::string(member);
}

} // namespace NETWEIR::Internal
