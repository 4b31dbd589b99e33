// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// The hardware is what stands behind SYNTHESIS; the benches have other macros.
`timescale 1ns / 1ps
module top(input clk, output reg [1:0] q);
`ifndef SYNTHESIS
    reg [1:0] model;
    initial $readmemh("stimuli.hex", no_such_memory);
`else
    wire real_one = q[0];
`endif
`ifdef SIMULATION
    reg in_simulation;
`elsif FORMAL
    reg in_proof;
`else
    wire in_hardware;
`endif
`ifdef FORMAL
    always @(posedge clk) assert (q != 2'd3);
`endif
    always @(posedge clk) q <= q + 1'b1;
endmodule
