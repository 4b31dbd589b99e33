// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "designxml.h"

#include <netweir/internal/nets/definitionmarker.h>
#include <netweir/internal/nets/interfacebindings.h>
#include <netweir/internal/nets/layout.h>
#include <netweir/internal/nets/memories.h>
#include <netweir/internal/nets/pathresolver.h>

namespace TarnTest {

/// The results of all phases before the marking of the instances. The XML must outlive them.
struct DesignPhases
{
    explicit DesignPhases(const DesignXml &xml)
        : design(*xml)
        , tree(treeOf(design))
        , bindings(NETWEIR::Internal::bindInterfaces(design, tree))
        , paths(design.types(), tree, bindings)
        , memories(memoriesOf(design, tree, paths))
        , layout(design.types(), memories)
        , placed(NETWEIR::Internal::placeDefinitions(design, layout))
        , marked(NETWEIR::Internal::markDefinitions(design, layout, placed))
    {
    }

    static NETWEIR::Internal::InstanceTree treeOf(const NETWEIR::Internal::ElaboratedDesign &design)
    {
        NETWEIR::Internal::InstanceTree tree;
        tree.build(design.top());
        return tree;
    }

    static NETWEIR::Internal::Memories memoriesOf(const NETWEIR::Internal::ElaboratedDesign &design,
                                                  const NETWEIR::Internal::InstanceTree &tree,
                                                  const NETWEIR::Internal::PathResolver &paths)
    {
        NETWEIR::Internal::Memories memories = NETWEIR::Internal::findMemories(design);
        NETWEIR::Internal::addMemoriesElsewhere(tree, paths, &memories);
        return memories;
    }

    const NETWEIR::Internal::MarkedDefinition &top() const
    {
        return NETWEIR::Internal::itemAt(marked, design.top().number);
    }

    const NETWEIR::Internal::ElaboratedDesign &design;
    const NETWEIR::Internal::InstanceTree tree;
    const NETWEIR::Internal::InterfaceBindings bindings;
    const NETWEIR::Internal::PathResolver paths;
    const NETWEIR::Internal::Memories memories;
    const NETWEIR::Internal::Layout layout;
    const std::vector<NETWEIR::Internal::PlacedDefinition> placed;
    const std::vector<NETWEIR::Internal::MarkedDefinition> marked;
};

} // namespace TarnTest
