// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// What only the simulator of the company can read does no harm where it is hidden.
module top(input clk, input d, output reg q);
    // synthesis translate_off
    `include "bench_utilities.vh"
    `BENCH_MESSAGE("clock", clk)
    initial begin this is no Verilog (
    endfunction end module
    // synthesis translate_on
    always @(posedge clk) q <= d;
    wire last;
endmodule
