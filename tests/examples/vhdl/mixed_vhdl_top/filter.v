// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module filter(clk, sample, spare, result, pad);
    input        clk;
    input  [3:0] sample;
    input        spare;
    output [1:0] result;
    inout        pad;
    reg  [3:0] held;
    wire [2:0] sum;
    wire       open_pin;
    always @(posedge clk) held <= sample;
    adder u_adder(.Clk(clk), .A({held[0], sample[2:0]}), .B(open_pin), .Sum(sum), .Keep());
    assign result[1] = sum[0];
endmodule
