// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Arrays with constant indexes are their elements; with others they are one memory.
module top(input logic clk, input logic [1:0] addr, input logic [3:0] d, output logic [3:0] q);
    wire  [3:0] vector [0:1];
    wire        bits [0:2];
    wire  [1:0] grid [2][0:1];
    logic [3:0] memory [0:3];
    assign vector[0]    = d;
    assign vector[1][2] = d[0];
    assign bits[1]      = d[1];
    assign grid[1][0]   = d[1:0];
    always_ff @(posedge clk) begin
        memory[addr] <= d;
        q            <= memory[addr];
    end
endmodule
