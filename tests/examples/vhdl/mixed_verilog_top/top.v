// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Verilog over VHDL over Verilog; arrays of instances and generates at the borders.
module top(input clk, input [3:0] d, output [7:0] q);
    wire [7:0] row;
    wire [1:0] few;
    wire       lonely, out_a;
    assign row[7:4] = d;
    pair u_named(.CLK(clk), .din(row[4:3]), .DOUT(q[7:6]));
    pair u_positions(clk, {lonely, clk}, q[1:0]);
    pair u_row [1:0] (.clk(clk), .din(row[5:2]), .dout(q[5:2]));
    pair u_open(.clk(), .din(2'b01));
    genvar n;
    generate
        for (n = 0; n < 2; n = n + 1) begin : g
            wire [1:0] w;
            if (n == 1) begin : inner
                pair u_gen(.clk(few[n]), .din(w), .dout({out_a, w[0]}));
            end
        end
    endgenerate
endmodule
