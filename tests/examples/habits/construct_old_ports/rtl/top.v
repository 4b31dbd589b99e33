// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Ports in the style of 1995: names first, directions and kinds later, one place left empty.
module top (clk, a, inner_b, hi, lo, q, , io);
    input        clk;
    input  [1:0] a;
    input        inner_b;
    output       hi, lo;
    output [1:0] q;
    inout        io;
    reg    [1:0] q;
    wire   [1:0] a;
    assign {hi, lo} = a;
    always @(posedge clk)
        q <= {inner_b, io};
endmodule
