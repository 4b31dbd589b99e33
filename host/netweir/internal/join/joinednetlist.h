// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "border.h"

#include <netweir/internal/parts/part.h>

#include <QString>

#include <memory>
#include <vector>

namespace NETWEIR {
class RtlNetlist;
} // namespace NETWEIR

namespace NETWEIR::Internal {

/// A part and the numbers of roots in it.
struct ReadPart
{
    Language language;
    std::unique_ptr<Part> part;
    std::vector<int> foreign; ///< The numbers of its foreign roots, by their indexes in the part.
};

/// An elaborated root: where it is, and what its instances have to know.
struct ReadRoot
{
    int part = -1;  ///< -1 before it is read.
    int index = -1; ///< In its part.
    Place place;    ///< Of its first instance.
    std::unique_ptr<BorderPorts> ports;
};

/// Builds the netlist of a design from its parts. @p roots and the foreign roots of the parts have
/// common numbers; root 0 is the top. @p topName is the name of the top node. All roots must be
/// read. Null when a unit is an instance below itself without end; @p error is then a message.
///
/// Linear in the netlist; iterative, because a design may change the language at any depth. Runs in
/// a thread, below a ReadGuard.
std::unique_ptr<RtlNetlist> joinParts(const std::vector<ReadPart> &parts,
                                      const std::vector<ReadRoot> &roots, const QString &topName,
                                      QString *error);

} // namespace NETWEIR::Internal
