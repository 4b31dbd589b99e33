// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bitrange.h"

#include <netweir/internal/xml/readoptions.h>

#include <vector>

namespace NETWEIR::Internal {

struct PlacedDefinition;

/// The targets of the writes of a definition that the elaborator was not given.
struct OmittedTargets
{
    std::vector<BitRange> bits;      ///< Of nets of the definition itself.
    QVector<OmittedWrite> elsewhere; ///< Of nets of interfaces or instances.
};

/// Nets are found by their names alone, whatever scope they are in. Linear in the variables, nets
/// and writes.
OmittedTargets omittedTargetsOf(const PlacedDefinition &placed);

} // namespace NETWEIR::Internal
