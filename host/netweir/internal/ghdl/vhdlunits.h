// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/parts/declaredunit.h>

#include <QStringList>
#include <QVector>

#include <vector>

namespace NETWEIR::Internal {

class VhdlDesign;

/// The entities and configurations of the sources, in their order. An entity uses what all its
/// architectures instantiate; a binding of an instance to an entity counts instead of the
/// component. Linear in the number of units and instances.
std::vector<DeclaredUnit> declaredVhdlUnits(const VhdlDesign &design);

/// The error that an entity below the units @p starts instantiates itself, perhaps through others.
/// The instantiation may have an end; GHDL breaks down if it has none. Empty if there is no circle.
QStringList recursionErrors(const std::vector<DeclaredUnit> &units, const QVector<int> &starts);

} // namespace NETWEIR::Internal
