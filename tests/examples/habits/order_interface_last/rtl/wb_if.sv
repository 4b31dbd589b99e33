// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

interface wb_if #(parameter int AW = 8) (input logic clk);
    logic          stb, ack;
    logic [AW-1:0] adr;
    modport master(output stb, adr, input ack);
    modport slave(input stb, adr, output ack);
endinterface
