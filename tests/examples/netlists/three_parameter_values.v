// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// One module at three values: its source name each time.
module top(input clk);
    stage #(1) one(clk);
    stage #(.W(2)) two(clk);
    stage #(.W(3)) three(clk);
    stage again(clk);
endmodule

module stage #(parameter W = 1) (input clk);
    localparam TOP = W - 1;
    wire [TOP:0] open;
    reg  [TOP:0] q;
    always @(posedge clk) q <= ~q;
endmodule
