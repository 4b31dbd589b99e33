// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Every form of a range, left to right as declared.
module top(input clk);
    parameter LEFT = 2;
    wire        single;
    wire [3:0]  down;
    wire [0:3]  up;
    wire [6:5]  offset;
    wire [1:-1] negative;
    wire [0:0]  one;
    wire [7:7]  seven;
    wire [LEFT:0] parameterised;
endmodule
