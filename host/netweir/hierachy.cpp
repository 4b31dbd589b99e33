// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "hierachy.h"

#include <vector>

namespace NETWEIR {

namespace {

/// Calls @p visit for @p root and its descendants, each node before its children and the children
/// in order. Iterative: a design may be nested deeper than the stack.
template <typename Visit>
void visitSubtree(const Hierachy *root, Visit visit)
{
    std::vector<const Hierachy *> pending{root};
    while (!pending.empty()) {
        const Hierachy *node = pending.back();
        pending.pop_back();
        visit(node);
        const QList<Hierachy *> &children = node->children();
        pending.insert(pending.end(), children.crbegin(), children.crend());
    }
}

} // namespace

QList<RtlNet *> Hierachy::singleNetsIncludeSub() const
{
    QList<RtlNet *> all;
    visitSubtree(this, [&all](const Hierachy *node) { all += node->nets(); });
    return all;
}

QList<RtlNetBus *> Hierachy::netbusesIncludeSub() const
{
    QList<RtlNetBus *> all;
    visitSubtree(this, [&all](const Hierachy *node) { all += node->buses(); });
    return all;
}

} // namespace NETWEIR
