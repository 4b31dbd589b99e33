// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

/// A synthetic VHDL design: blocks with records, enumerations, arrays and generate statements, of
/// many different entities, arranged in groups below the top "bench_top".
struct GeneratedVhdl
{
    int blockEntities = 64; ///< Different entities of blocks.
    int groupEntities = 8;  ///< Different entities that instantiate blocks.
    int groups = 16;        ///< Instances of group entities.
    int blocksPerGroup = 32;

    /// The text of a package and all entities.
    QByteArray source() const;
};
