// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// One package for hardware and bench.
module top(input logic clk, output bench_pkg::level_t level);
    always_ff @(posedge clk) level <= level + bench_pkg::STEP;
endmodule
