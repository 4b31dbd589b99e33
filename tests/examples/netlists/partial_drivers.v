// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// A driver marks its bits only; a bus is marked when one of its bits is.
module top(input [1:0] sel, input a);
    wire [7:0] d;
    wire [0:3] up;
    reg  [3:0] r;
    reg  [3:0] dynamic;
    wire [3:0] left;
    wire       x;
    wire [3:0] indexed;
    assign d[1:0] = {a, a};
    assign d[5]   = a;
    assign up[2]  = a;
    always @* r[2:1] = {a, a};
    always @* dynamic[sel] = a;
    assign {x, left[3], left[0]} = {a, sel};
    assign indexed[2 -: 2] = sel;
endmodule
