// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "countingloops.h"
#include "layout.h"

namespace NETWEIR::Internal {

class ElaboratedDesign;

/// Finds the bits that the references within one definition take of its own nets. Owns no more than
/// the loops that it has met.
class BitLocator
{
public:
    /// All have to outlive this.
    BitLocator(const ElaboratedDesign &design, const Layout &layout,
               const PlacedDefinition &placed);

    /// The net that a plain reference names; null for locals, constants and variables of packages.
    const PlacedVariable *netOf(const Reference &reference) const;

    /// The bits that a plain reference takes; an empty range where it names no net.
    BitRange bitsOf(const Reference &reference) const;

    /// Calls @p visit with the bits that a plain reference takes, round by round of the loops
    /// around it; never where it names no net.
    void forEachRound(const Reference &reference,
                      const std::function<void(const BitRange &)> &visit);

private:
    const ElaboratedDesign &m_design;
    const Layout &m_layout;
    const PlacedDefinition &m_placed;
    const IndexEvaluator m_indexes; ///< With no variable known.
    CountingLoops m_loops;
};

} // namespace NETWEIR::Internal
