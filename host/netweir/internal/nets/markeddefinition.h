// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "connection.h"
#include "mark.h"

#include <netweir/internal/xml/readoptions.h>
#include <netweir/internal/xml/reference.h>

namespace NETWEIR::Internal {

struct PlacedDefinition;

/// What drives the nets of a definition from within, for all its instances at once, and what only
/// an instance can tell.
///
/// Made by DefinitionMarker and constant from then on. Refers to the definition with its bits and
/// into the document, which both have to outlive it; takes a byte for each bit.
struct MarkedDefinition
{
    const PlacedDefinition *placed = nullptr;
    Marks marks; ///< What holds for every instance.
    std::vector<Connection> connections;
    std::vector<Reference> writesElsewhere;    ///< Writes to nets of other nodes.
    QVector<OmittedWrite> omittedElsewhere;    ///< The same, left out of what the elaborator read.
    std::vector<Reference> connectedElsewhere; ///< Nets of other nodes that ports connect to.
};

} // namespace NETWEIR::Internal
