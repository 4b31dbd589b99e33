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
        busMarks.clear();
        for (qint64 bit = net.bit + net.width() - 1; bit >= net.bit; --bit)
            busMarks.push_back(netMarks(marks[bit], net));
        RtlNetBus *added = builder->addBus(node, net.name, net.left, net.right, busMarks);
        if (!identifiers.empty())
            builder->setIdentifiers(added, identifiers);
    }
}

} // namespace

void stampNetlist(const InstanceTree &tree, const std::vector<PlacedDefinition> &placed,
                  const InstanceMarks &marks, Hierachy *node, NetlistBuilder *builder,
                  const std::function<void(int instance, Hierachy *parent)> &border)
{
    auto nodes = itemsOf<std::vector<Hierachy *>>(tree.size());
    nodes.front() = node;
    for (int instance = 0; instance < tree.size(); ++instance) {
        const Definition &definition = tree.definitionOf(instance);
        const int parent = tree.at(instance).parent;
        if (definition.isForeign()) {
            border(instance, itemAt(nodes, parent));
            continue;
        }
        Hierachy *&own = itemAt(nodes, instance);
        if (parent >= 0) {
            own = builder->addHierachy(itemAt(nodes, parent), tree.nameOf(instance),
                                       definition.sourceName);
            const std::vector<int> identifiers = tree.identifiersOf(instance);
            if (!identifiers.empty())
                builder->setIdentifiers(own, identifiers);
        }
        addNets(itemAt(placed, definition.number), marks.at(instance), own, builder);
    }
}

} // namespace NETWEIR::Internal
