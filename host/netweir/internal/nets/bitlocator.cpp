// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "bitlocator.h"

#include <netweir/internal/xml/elaborateddesign.h>

namespace NETWEIR::Internal {

BitLocator::BitLocator(const ElaboratedDesign &design, const Layout &layout,
                       const PlacedDefinition &placed)
    : m_design(design)
    , m_layout(layout)
    , m_placed(placed)
    , m_indexes(*placed.definition, design.types())
    , m_loops(*placed.definition, design.types())
{
}

const PlacedVariable *BitLocator::netOf(const Reference &reference) const
{
    const Definition &definition = *m_placed.definition;
    const Symbol symbol = definition.find(reference.scope, reference.name());
    if (symbol.kind != Symbol::Kind::Variable)
        return nullptr;
    const bool isNet = itemAt(definition.variables, symbol.index).isNet;
    if (!isNet || m_design.isToPackage(reference))
        return nullptr;
    return &itemAt(m_placed.variables, symbol.index);
}

BitRange BitLocator::bitsOf(const Reference &reference) const
{
    const PlacedVariable *net = netOf(reference);
    return net ? m_layout.locate(*net, reference, m_indexes) : BitRange();
}

void BitLocator::forEachRound(const Reference &reference,
                              const std::function<void(const BitRange &)> &visit)
{
    const PlacedVariable *net = netOf(reference);
    if (!net)
        return;
    const auto locate = [this, net, &reference, &visit](const IndexEvaluator &round) {
        visit(m_layout.locate(*net, reference, round));
    };
    if (reference.isConstant())
        locate(m_indexes);
    else
        m_loops.forEachRound({reference.node, reference.scope}, locate);
}

} // namespace NETWEIR::Internal
