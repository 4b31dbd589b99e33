// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// The same from Verilog.
module top(input clk, inout pad);
    wire idle, driven, drives, both;
    assign driven = clk;
    assign both = clk;
    pads u(.idle(idle), .driven(driven), .drives(drives), .both(both), .pad(pad));
endmodule
