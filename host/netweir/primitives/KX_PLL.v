// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Phase-locked loop with two outputs.
module KX_PLL #(
    parameter CLKIN_PERIOD = 10,
    parameter CLKFBOUT_MULT = 1,
    parameter CLKOUT0_DIVIDE = 1,
    parameter CLKOUT1_DIVIDE = 1
) (
    input  CLKIN,
    input  RST,
    output CLKOUT0,
    output CLKOUT1,
    output LOCKED
);
endmodule
