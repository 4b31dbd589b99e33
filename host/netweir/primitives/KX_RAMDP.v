// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Block RAM with two independent ports.
module KX_RAMDP #(
    parameter ADDR_WIDTH = 10,
    parameter DATA_WIDTH = 16
) (
    input                   CLKA,
    input                   ENA,
    input                   WEA,
    input  [ADDR_WIDTH-1:0] ADDRA,
    input  [DATA_WIDTH-1:0] DIA,
    output [DATA_WIDTH-1:0] DOA,
    input                   CLKB,
    input                   ENB,
    input                   WEB,
    input  [ADDR_WIDTH-1:0] ADDRB,
    input  [DATA_WIDTH-1:0] DIB,
    output [DATA_WIDTH-1:0] DOB
);
endmodule
