// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`define W 4
module top(input logic [`W-1:0] a);
    wire [widths_pkg::LAST-1:0] last;
    narrow u_narrow(.a(a[1:0]));
endmodule
`undef W
`define W 2
