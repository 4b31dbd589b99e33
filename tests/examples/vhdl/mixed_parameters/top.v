// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// An entity below Verilog with parameters by name and by position, and with defaults.
module top #(parameter SIZE = 3) (input clk);
    localparam DOUBLE = SIZE * 2;
    wire [DOUBLE-1:0] wide;
    wire [2:0] low;
    stage plain(.clk(clk), .d(low[0]));
    stage #(.W(DOUBLE), .NAME("abc")) named(.clk(clk), .d(wide));
    stage #(3, "xy", 1'b1) positions(clk, low);
    genvar n;
    generate
        for (n = 1; n < 3; n = n + 1) begin : g
            localparam [7:0] START = 8'hA0 + n;
            stage #(.w(n), .INIT(START)) u(.clk(clk), .d(wide[n-1:0]));
        end
    endgenerate
    stage #(.W(2)) row [1:0] (.clk(clk), .d(wide[3:0]));
endmodule
