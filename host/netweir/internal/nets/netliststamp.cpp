// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "netliststamp.h"

#include "instancemarks.h"
#include "instancetree.h"
#include "placeddefinition.h"

#include <netweir/hierachy.h>
#include <netweir/internal/xml/definition.h>
#include <netweir/netlistbuilder.h>

namespace NETWEIR::Internal {

namespace {

NetMarks netMarks(quint8 marks, const PlacedNet &net)
{
    return {bool(marks & MarkIn), bool(marks & MarkOut), net.processWrites};
}

void addNets(const PlacedDefinition &placed, const quint8 *marks, Hierachy *node,
             NetlistBuilder *builder)
{
    std::vector<NetMarks> busMarks;
    for (const PlacedNet &net : placed.nets) {
        const std::vector<int> &identifiers = itemAt(placed.identifiers, net.identifiers);
        if (!net.isBus) {
            RtlNet *added = builder->addNet(node, net.name, netMarks(marks[net.bit], net));
            if (!identifiers.empty())
                builder->setIdentifiers(added, identifiers);
            continue;
        }
        busMarks.resize(std::size_t(net.width()));
        const quint8 *bit = marks + net.bit + net.width();
        for (NetMarks &mark : busMarks)
            mark = netMarks(*--bit, net);
        RtlNetBus *added = builder->addBus(node, net.name, net.left, net.right, busMarks);
        if (!identifiers.empty())
            builder->setIdentifiers(added, identifiers);
    }
}

/// The names of instances within their parents, which all instances of the parent's definition
/// share.
class InstanceNames
{
public:
    /// @p definitions is the number of definitions.
    InstanceNames(const InstanceTree &tree, int definitions)
        : m_tree(tree)
        , m_names(itemsOf<std::vector<std::vector<QString>>>(definitions))
    {
    }

    const QString &at(int instance)
    {
        const int parent = m_tree.at(instance).parent;
        const Definition &definition = m_tree.definitionOf(parent);
        std::vector<QString> &names = itemAt(m_names, definition.number);
        names.resize(std::size_t(definition.childCount));
        QString &name = itemAt(names, instance - m_tree.at(parent).firstChild);
        if (name.isNull())
            name = m_tree.nameOf(instance);
        return name;
    }

private:
    const InstanceTree &m_tree;
    std::vector<std::vector<QString>>
        m_names; ///< By the number of the definition and of the child.
};

} // namespace

void stampNetlist(const InstanceTree &tree, const std::vector<PlacedDefinition> &placed,
                  const InstanceMarks &marks, Hierachy *node, NetlistBuilder *builder,
                  const std::function<void(int instance, Hierachy *parent)> &border)
{
    auto nodes = itemsOf<std::vector<Hierachy *>>(tree.size());
    nodes.front() = node;
    InstanceNames names(tree, countOf(placed));
    for (int instance = 0; instance < tree.size(); ++instance) {
        const Definition &definition = tree.definitionOf(instance);
        const int parent = tree.at(instance).parent;
        if (definition.isForeign()) {
            border(instance, itemAt(nodes, parent));
            continue;
        }
        Hierachy *&own = itemAt(nodes, instance);
        if (parent >= 0) {
            own = builder->addHierachy(itemAt(nodes, parent), names.at(instance),
                                       definition.sourceName);
            const std::vector<int> identifiers = tree.identifiersOf(instance);
            if (!identifiers.empty())
                builder->setIdentifiers(own, identifiers);
        }
        addNets(itemAt(placed, definition.number), marks.at(instance), own, builder);
    }
}

} // namespace NETWEIR::Internal
