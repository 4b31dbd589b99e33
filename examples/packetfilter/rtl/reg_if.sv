// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// A register bus: writes and reads take one clock, read data comes a clock later.
interface reg_if #(
    parameter int ADDR_WIDTH = 6
);

    logic [ADDR_WIDTH-1:0] addr;
    logic [31:0]           wdata;
    logic                  write;
    logic [31:0]           rdata;

    modport host (output addr, wdata, write, input rdata);
    modport device (input addr, wdata, write, output rdata);

endinterface
