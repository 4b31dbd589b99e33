// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "borderpin.h"
#include "connection.h"
#include "elsewherereference.h"
#include "mark.h"

#include <netweir/internal/xml/readoptions.h>

namespace NETWEIR::Internal {

struct PlacedDefinition;

/// The drivers inside a definition, which are the same for all its instances, and everything that
/// depends on the instance.
///
/// Created by DefinitionMarker and constant afterwards. Refers to the placed definition, which must
/// outlive it. Takes one byte per bit.
struct MarkedDefinition
{
    const PlacedDefinition *placed = nullptr; ///< Null until the definition is marked.
    Marks marks;                              ///< Marks that apply to every instance.
    std::vector<Connection> connections;
    std::vector<Border> borders; ///< In the order of the instances.
    /// Writes to nets of other nodes.
    std::vector<ElsewhereReference> writesElsewhere;
    QVector<OmittedWrite> omittedElsewhere; ///< Such writes in omitted items.
    /// Nets of other nodes that ports connect to.
    std::vector<ElsewhereReference> connectedElsewhere;
};

} // namespace NETWEIR::Internal
