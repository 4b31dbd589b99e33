// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`include "../inc/defines.vh"
`include "../inc/checks.svh"
module top(input logic clk, input logic [`WIDTH-1:0] d, output logic [`WIDTH-1:0] q);
    `REGISTER(q, d)
endmodule
