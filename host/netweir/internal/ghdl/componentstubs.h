// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ghdlinput.h"

#include <netweir/internal/parts/declaredunit.h>
#include <netweir/internal/signals/vhdlpartinput.h>

#include <QHash>
#include <QStringList>

#include <vector>

namespace NETWEIR::Internal {

class UnitIndex;
class VhdlDesign;

/// Entities in place of those that the sources do not declare, so that GHDL elaborates their
/// instances.
struct StubUnits
{
    QVector<GeneratedText> texts;
    /// The units of the other language, by the names of the entities, folded.
    QHash<QByteArray, ForeignUnit> foreign;
    QStringList errors;
};

/// Stubs for the components that no entity of the sources implements. GHDL takes the entity with
/// the name of the component in the library in which the component is declared. Linear in the
/// instances of the design.
StubUnits componentStubs(const VhdlDesign &design, const UnitIndex &index,
                         const std::vector<DeclaredUnit> &foreign);

} // namespace NETWEIR::Internal
