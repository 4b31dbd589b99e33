// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`include "types.svh"
module top(input logic clk, input request_t in);
    request_t held;
    sub u_sub(.clk(clk), .in(in), .out(held));
endmodule
