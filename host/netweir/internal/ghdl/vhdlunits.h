// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/parts/declaredunit.h>

#include <vector>

namespace NETWEIR::Internal {

class VhdlDesign;

/// The entities and configurations of the sources, in their order. An entity uses what all its
/// architectures instantiate; a binding of an instance to an entity counts instead of the
/// component. Linear in the number of units and instances.
std::vector<DeclaredUnit> declaredVhdlUnits(const VhdlDesign &design);

} // namespace NETWEIR::Internal
