// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "designtree.h"
#include "genericline.h"
#include "netdrivers.h"
#include "waveheader.h"

#include <QString>

#include <memory>
#include <unordered_map>
#include <vector>

namespace NETWEIR::Internal {

/// The scopes and signals of an elaborated design, with the net of each scalar and its drivers.
///
/// Put together from all that GHDL tells: the header of the wave file has the signals and their
/// types, the tree has the entities, the map the nets, the table the drivers.
struct ElaboratedSignals
{
    WaveHeader header;
    std::vector<TreeScope> tree; ///< By scope of the header.
    std::vector<int> nets;       ///< By scalar of the header, the number among the drivers.
    NetDrivers drivers;
    std::unordered_map<int, std::vector<GenericLine>> generics; ///< Of some scopes.
};

/// Reads what GHDL has printed to @p outputPath and the wave file. Checks that they agree. Null
/// with a message when a file is missing, incomplete or has an unexpected form.
///
/// The printed tables are read as a stream. Memory is linear in the scalars, some 30 bytes for
/// each.
std::unique_ptr<ElaboratedSignals> readElaboratedSignals(const QString &outputPath,
                                                         const QString &wavePath, QString *error);

} // namespace NETWEIR::Internal
