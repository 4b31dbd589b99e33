// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "borderpin.h"
#include "connection.h"
#include "mark.h"

#include <netweir/internal/xml/readoptions.h>
#include <netweir/internal/xml/reference.h>

namespace NETWEIR::Internal {

struct PlacedDefinition;

/// The drivers inside a definition, which are the same for all its instances, and everything that
/// depends on the instance.
///
/// Created by DefinitionMarker and constant afterwards. Refers to the placed definition and the
/// document, which both must outlive it. Takes one byte per bit.
struct MarkedDefinition
{
    const PlacedDefinition *placed = nullptr;
    Marks marks; ///< Marks that apply to every instance.
    std::vector<Connection> connections;
    std::vector<Border> borders;               ///< In the order of the instances.
    std::vector<Reference> writesElsewhere;    ///< Writes to nets of other nodes.
    QVector<OmittedWrite> omittedElsewhere;    ///< Such writes in omitted items.
    std::vector<Reference> connectedElsewhere; ///< Nets of other nodes that ports connect to.
};

} // namespace NETWEIR::Internal
