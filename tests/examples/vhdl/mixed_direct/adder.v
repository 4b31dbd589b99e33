// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module adder #(parameter WIDTH = 1) (clk, a, b, c);
    input              clk;
    input  [WIDTH-1:0] a;
    output [WIDTH-1:0] b;
    output             c;
    reg [WIDTH:0] sum;
    always @(posedge clk) sum <= sum + a;
    assign {c, b} = sum;
endmodule
