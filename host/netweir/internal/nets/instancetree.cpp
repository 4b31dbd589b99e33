// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "instancetree.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/xml/attributes.h>
#include <netweir/internal/xml/definition.h>

namespace NETWEIR::Internal {

namespace {

constexpr qint64 MostInstances = qint64(1) << 24;

} // namespace

bool InstanceTree::build(const Definition &top)
{
    Instance root;
    root.definition = &top;
    m_instances.push_back(root);
    for (int instance = 0; instance < size(); ++instance) {
        const qint64 children = definitionOf(instance).childCount;
        ReadGuard::check(1 + children);
        if (size() + children > MostInstances)
            return false;
        addChildren(instance);
    }
    return true;
}

int InstanceTree::size() const
{
    return countOf(m_instances);
}

const Instance &InstanceTree::at(int instance) const
{
    return itemAt(m_instances, instance);
}

const InstanceItem &InstanceTree::itemOf(int instance) const
{
    const Instance &node = at(instance);
    return itemAt(definitionOf(node.parent).instances, node.item);
}

int InstanceTree::childOf(int instance, int item, qint64 position) const
{
    const Instance &parent = at(instance);
    const InstanceItem &source = itemAt(parent.definition->instances, item);
    if (source.firstChild < 0 || position < 0 || position >= source.count())
        return -1;
    return int(parent.firstChild + source.firstChild + position);
}

QString InstanceTree::nameOf(int instance) const
{
    const Instance &node = at(instance);
    const InstanceItem &item = itemOf(instance);
    const QString name = definitionOf(node.parent).prefixOf(item.scope) + item.name;
    if (!item.isArray)
        return name;
    return name + QLatin1Char('[') + QString::number(item.indexAt(node.position)) +
           QLatin1Char(']');
}

std::vector<int> InstanceTree::identifiersOf(int instance) const
{
    const InstanceItem &item = itemOf(instance);
    const Definition &definition = definitionOf(at(instance).parent);
    if (!hidesSteps(item.name) && !definition.isEscaped(item.scope))
        return {};
    std::vector<int> lengths = definition.identifiersOf(item.scope);
    lengths.push_back(item.name.size());
    return lengths;
}

void InstanceTree::addChildren(int parent)
{
    const Definition &definition = definitionOf(parent);
    itemAt(m_instances, parent).firstChild = size();
    for (int i = 0; i < countOf(definition.instances); ++i) {
        const InstanceItem &item = itemAt(definition.instances, i);
        if (item.firstChild < 0)
            continue;
        for (qint64 position = 0; position < item.count(); ++position)
            m_instances.push_back({item.definition, parent, i, position, 0});
    }
}

} // namespace NETWEIR::Internal
