// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// A bus for each innermost dimension.
module top(input logic a);
    wire [1:0][3:0]      two;
    wire [0:1][1:0][2:1] three;
    assign two[1][2]   = a;
    assign three[1][0] = {a, a};
endmodule
