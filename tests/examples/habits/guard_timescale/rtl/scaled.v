// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`timescale 1ns / 1ps
module scaled(input clk, input d, output reg q);
    always @(posedge clk) q <= #1 d;
endmodule
