// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bitlocator.h"
#include "markeddefinition.h"

#include <netweir/internal/parts/unitnames.h>

#include <map>

namespace NETWEIR::Internal {

struct Definition;

/// Marks the drivers inside a definition, once for all its instances: assignments, outputs of
/// routines and instances, pins of stubs. Lists everything that depends on the instance: writes to
/// other nodes and connections of ports.
///
/// Used for one definition, whose elements may come run by run. Time is linear in its elements and
/// bits.
class DefinitionMarker
{
public:
    /// All arguments must outlive this object. @p marked contains the definitions of all instances
    /// by number.
    DefinitionMarker(const ElaboratedDesign &design, const Layout &layout,
                     const std::vector<MarkedDefinition> &marked, const PlacedDefinition &placed);

    /// Marks everything in a definition whose elements are all in memory.
    MarkedDefinition mark();
    /// Marks what the elements in memory drive.
    void markElements();
    /// The result, after the last elements.
    MarkedDefinition take();

private:
    void markDeclarations();
    void markSupplies();
    pugi::xml_node elementOf(const PlacedVariable &variable) const;
    void markOmitted();
    void markCalls();
    void markWrites(const Occurrence &target, quint8 marks);
    void markBits(const BitRange &range, quint8 marks);
    void markPins();
    void markPin(int item, const pugi::xml_node &pin);
    void markBorderPin(int item, const pugi::xml_node &pin);
    int foreignPortOf(const Definition &stub, const pugi::xml_node &pin);
    void markPort(int item, int port, const Occurrence &expression);
    void markDrivenWithin(const Connection &connection);

    const ElaboratedDesign &m_design;
    const std::vector<MarkedDefinition> &m_marked;
    const PlacedDefinition &m_placed;
    const Definition &m_definition;
    BitLocator m_bits;
    /// The ports of the foreign units in the definition.
    std::map<const DeclaredUnit *, NamesAcross> m_foreignPorts;
    MarkedDefinition m_result;
};

} // namespace NETWEIR::Internal
