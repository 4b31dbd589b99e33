// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`include "sizes.vh"
module top(input wire clk, input wire [`WIDTH-1:0] d, output wire [`WIDTH-1:0] q);
    wire [`WIDTH-1:0] mid;
    stage u_stage(.clk(clk), .d(d), .q(mid));
    delay u_delay(.clk(clk), .d(mid), .q(q));
endmodule
