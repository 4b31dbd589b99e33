// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input clk, input [3:0] a, output [7:0] p);
    multiplier u_mult(.clk(clk), .a(a), .b(4'd3), .p(p));
endmodule
