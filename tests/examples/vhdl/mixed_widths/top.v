// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Verilog pads and cuts what it connects, with a warning. Padding drives.
module top(input clk);
    wire [2:0] narrow;
    wire [4:0] wide;
    leaf few(.d(narrow));
    leaf many(.d(wide));
    leaf exact(.d({clk, narrow}));
endmodule
