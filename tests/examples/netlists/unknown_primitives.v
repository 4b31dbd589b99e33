// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Pins of modules without a source have no direction: what they connect to counts as driven.
`define MAKE_PAD(name, pin) MYSTERY_PAD name(.PAD(pin));
module top(input a, input [3:0] b);
    wire       named, positional, from_macro, open;
    wire [3:0] part;
    wire [2:0] row;
    MYSTERY_A #(.MODE("FAST"), .LEVEL(3)) u0(.X(named), .Y(a), .Z(part[1]));
    MYSTERY_B u1(positional, b);
    `MAKE_PAD(u2, from_macro)
    MYSTERY_C u3 [0:1] (.Q(row[1:0]), .D(a));
endmodule
