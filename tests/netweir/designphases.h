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
        , placed(design.listByDefinition<NETWEIR::Internal::PlacedDefinition>())
        , marked(design.listByDefinition<NETWEIR::Internal::MarkedDefinition>())
    {
        using NETWEIR::Internal::itemAt;
        for (const NETWEIR::Internal::Definition *definition : design.bottomUp()) {
            NETWEIR::Internal::PlacedDefinition &places = itemAt(placed, definition->number);
            places = layout.place(*definition);
            itemAt(marked, definition->number) =
                NETWEIR::Internal::DefinitionMarker(design, layout, marked, places).mark();
        }
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
        NETWEIR::Internal::Memories memories;
        for (const NETWEIR::Internal::Definition *definition : design.bottomUp())
            memories.addOf(*definition);
        memories.addElsewhere(tree, paths);
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
    std::vector<NETWEIR::Internal::PlacedDefinition> placed; ///< By the number of the definition.
    std::vector<NETWEIR::Internal::MarkedDefinition> marked; ///< By the number of the definition.
};

} // namespace TarnTest
