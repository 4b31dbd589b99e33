// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Both branches can be read: the hardware is the one without the macro.
module top(input clk, input d, output q);
`ifdef VERILATOR
    wire for_the_linter = d;
    assign q = for_the_linter;
`else
    wire for_the_device;
    IO_DELAY u_delay(.I(d), .O(for_the_device));
    assign q = for_the_device;
`endif
endmodule
