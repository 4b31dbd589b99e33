// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Block RAM with one clock and one port.
module KX_RAM #(
    parameter ADDR_WIDTH = 10,
    parameter DATA_WIDTH = 16
) (
    input                   CLK,
    input                   EN,
    input                   WE,
    input  [ADDR_WIDTH-1:0] ADDR,
    input  [DATA_WIDTH-1:0] DI,
    output [DATA_WIDTH-1:0] DO
);
endmodule
