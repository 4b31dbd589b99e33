// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

/// A synthetic design: blocks of registers and gates of many different modules, arranged in groups
/// below the top "bench_top".
struct GeneratedDesign
{
    int blockModules = 400; ///< Different modules of blocks.
    int groupModules = 100; ///< Different modules that instantiate blocks.
    int groups = 400;       ///< Instances of group modules.
    int blocksPerGroup = 49;
    int netsPerBlock = 12;

    /// The Verilog text of all modules.
    QByteArray source() const;
};
