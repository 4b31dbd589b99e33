// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bitrange.h"

#include <netweir/internal/xml/readoptions.h>

#include <vector>

namespace NETWEIR::Internal {

struct PlacedDefinition;

/// The targets of the writes in the omitted items of a definition.
struct OmittedTargets
{
    std::vector<BitRange> bits;      ///< Bits of nets of the definition itself.
    QVector<OmittedWrite> elsewhere; ///< Writes to nets of interfaces or instances.
};

/// Finds nets by name, regardless of their scope. Linear in the variables, nets and writes.
OmittedTargets omittedTargetsOf(const PlacedDefinition &placed);

} // namespace NETWEIR::Internal
