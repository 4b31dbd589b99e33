// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Arrays of every kind: registers, memories, ports.
module filter #(parameter int TAPS = 3) (input logic clk, input logic [3:0] x,
                                         output logic [3:0] taps [TAPS]);
    always_ff @(posedge clk) begin
        taps[0] <= x;
        taps[1] <= taps[0];
        taps[2] <= taps[1];
    end
endmodule
module top(input logic clk, input logic we, input logic [2:0] addr, input logic [3:0] x,
           output logic [3:0] y);
    logic [3:0]           taps [3];
    (* ram_style = "block" *) logic [3:0] ram [0:7];
    logic [1:0][1:0]      packed_pair;
    logic                 grid [2][0:1];
    logic [1:0] [7:0]     lanes [1:0];
    initial for (int i = 0; i < 8; i++) ram[i] = '0;
    filter u_filter(.clk(clk), .x(x), .taps(taps));
    always_ff @(posedge clk) begin
        if (we) ram[addr] <= taps[2];
        y <= ram[addr];
    end
    assign packed_pair[1] = x[1:0];
    assign grid[1] = '{x[0], x[1]};
    assign lanes[0][1][7:4] = x;
endmodule
