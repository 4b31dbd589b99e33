// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Outputs of instances mark what they connect to: a part, a concatenation, an array of instances.
module top(input a);
    wire [7:0] part;
    wire       x;
    wire [3:0] y;
    wire [7:0] row;
    wire [1:0] open;
    two u_part(.i(a), .o(part[4:3]));
    two u_concat(.i(a), .o({x, y[2]}));
    two u_row [0:2] (.i(a), .o(row[6:1]));
    two u_none(.i(a), .o());
endmodule

module two(input i, output [1:0] o);
    assign o = {i, i};
endmodule
