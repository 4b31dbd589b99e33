// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "hierachy.h"

#include <vector>

namespace NETWEIR {

namespace {

/// @p root and its descendants, each node before its children, and the children in order.
/// Iterative, because the nesting of a design may exceed the stack.
std::vector<const Hierachy *> subtreeOf(const Hierachy *root)
{
    std::vector<const Hierachy *> nodes;
    std::vector<const Hierachy *> pending{root};
    while (!pending.empty()) {
        const Hierachy *node = pending.back();
        pending.pop_back();
        nodes.push_back(node);
        const QList<Hierachy *> &children = node->children();
        pending.insert(pending.end(), children.crbegin(), children.crend());
    }
    return nodes;
}

/// The joined results of @p own for all nodes of the subtree of @p root.
template <typename Item>
QList<Item *> joined(const Hierachy *root, const QList<Item *> &(Hierachy::*own)() const)
{
    const std::vector<const Hierachy *> nodes = subtreeOf(root);
    int size = 0;
    for (const Hierachy *node : nodes)
        size += (node->*own)().size();
    QList<Item *> all;
    all.reserve(size);
    for (const Hierachy *node : nodes)
        all += (node->*own)();
    return all;
}

} // namespace

QList<RtlNet *> Hierachy::singleNetsIncludeSub() const
{
    return joined(this, &Hierachy::nets);
}

QList<RtlNetBus *> Hierachy::netbusesIncludeSub() const
{
    return joined(this, &Hierachy::buses);
}

} // namespace NETWEIR
