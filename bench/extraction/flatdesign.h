// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

/// A synthetic Verilog design with all its content in one module, the top "bench_top".
struct FlatDesign
{
    /// Instances of library cells, like those of a netlist that a synthesis has written. Each
    /// drives a net, and its inputs are connected to any other nets.
    int cells = 0;
    int nets = 0; ///< Single nets beside them, every tenth with an assignment.

    /// The text of the cells and the module.
    QByteArray source() const;
};
