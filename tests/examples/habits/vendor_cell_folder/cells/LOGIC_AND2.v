// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`celldefine
`timescale 1 ns / 100 ps
module LOGIC_AND2 (A, B, Y);
input A, B;
output Y;
and (Y, A, B);
endmodule
`endcelldefine
