// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "connection.h"

#include <netweir/internal/ground/messages.h>

#include <vector>

namespace NETWEIR::Internal {

/// A connected pin of a foreign instance.
struct BorderPin
{
    int port = 0;          ///< Index among the declared ports of the unit.
    qint64 width = 0;      ///< Connected bits, 0 when they are not known.
    bool isInput = false;  ///< Or may be driven from outside.
    Connection connection; ///< Of an input; without segments all of its bits are driven.
};

/// An instance, or an array of instances, of a unit of the other language.
struct Border
{
    int item = 0; ///< Index among the instances of the definition.
    Place place;  ///< Where the instance is in the source.
    std::vector<BorderPin> pins;
};

} // namespace NETWEIR::Internal
