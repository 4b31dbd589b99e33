// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// An input that its own module drives: a tool takes it, with a warning.
module top(input clk, input a, output y);
    wire free;
    sub u_sub(.clk(clk), .a(a), .b(free), .y(y));
endmodule
module sub(input clk, input a, input [1:0] b, output y);
    assign b[1] = a;
    assign y = b[0] ^ a;
endmodule
