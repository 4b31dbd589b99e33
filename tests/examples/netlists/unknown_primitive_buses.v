// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Pins of modules without a source are as wide as what they connect to.
module top(input a);
    wire [3:0] part;
    wire [3:0] whole;
    wire [3:0] joined;
    wire       x;
    MYSTERY u0(.A(part[2:1]), .B(whole), .C({x, joined[3:2]}), .D(a));
endmodule
