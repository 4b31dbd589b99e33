// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Multiplier of the DSP block.
module KX_MULT #(
    parameter A_WIDTH = 18,
    parameter B_WIDTH = 18
) (
    input                        CLK,
    input                        CE,
    input                        RST,
    input  [A_WIDTH-1:0]         A,
    input  [B_WIDTH-1:0]         B,
    output [A_WIDTH+B_WIDTH-1:0] P
);
endmodule
