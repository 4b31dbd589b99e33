// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "countingloops.h"
#include "elsewherereference.h"
#include "layout.h"

namespace NETWEIR::Internal {

class ElaboratedDesign;

/// Finds the bits of a definition's own nets that its references select. Owns only the loops that
/// it has visited.
class BitLocator
{
public:
    /// All arguments must outlive this object.
    BitLocator(const ElaboratedDesign &design, const Layout &layout,
               const PlacedDefinition &placed);

    /// The net of a plain reference; null for local variables, constants and variables of packages.
    const PlacedVariable *netOf(const Reference &reference) const;

    /// The bits of a plain reference; an empty range when it does not name a net.
    BitRange bitsOf(const Reference &reference) const;

    /// Calls @p visit with the bits of a plain reference for each round of the loops around it.
    /// Does not call it when the reference does not name a net.
    void forEachRound(const Reference &reference,
                      const std::function<void(const BitRange &)> &visit);

    /// To be called before other elements of the definition come into memory.
    void forgetElements() { m_loops.forgetElements(); }

    /// What is left of a hierarchical reference without its elements.
    ElsewhereReference elsewhere(const Reference &reference) const
    {
        return Internal::elsewhere(reference, m_indexes);
    }

private:
    const ElaboratedDesign &m_design;
    const Layout &m_layout;
    const PlacedDefinition &m_placed;
    const IndexEvaluator m_indexes; ///< Without known variables.
    CountingLoops m_loops;
};

} // namespace NETWEIR::Internal
