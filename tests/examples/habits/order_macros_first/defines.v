// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`timescale 1ns/1ps
`define DATA_WIDTH 4
`define DATA_RANGE `DATA_WIDTH-1:0
`define CLOCKED(body) always @(posedge clk) begin body end
