// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

/// A synthetic SystemVerilog design with 5 million nets in 27,000 nodes at the default sizes:
/// chains of stages with structures, buses, arrays, interfaces and generate blocks, whose ports
/// drive each other, below the top "bench_top". A full path has 140 letters on
/// average.
struct LargeDesign
{
    /// Each stage, with all below it, has a parameter value of its own, so that the elaborator
    /// makes 16,000 different modules. Otherwise a few modules have all instances.
    bool hasOwnModules = false;
    int regions = 16;
    int clustersPerRegion = 33;
    int stagesPerCluster = 10;

    /// The text of all modules.
    QByteArray source() const;
};
