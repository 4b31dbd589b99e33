// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module tuned #(
    parameter W = 1,
    parameter NAME = "x",
    parameter FAST = 0,
    parameter [3:0] MASK = 4'b1111,
    parameter RATE = 0.5
) (input clk, input [W-1:0] d);
    wire [W-1:0] by_width;
    generate
        if (NAME == "full") begin : named
            wire is_full;
        end
        if (FAST) begin : quick
            wire is_fast;
        end
        if (MASK[3] & MASK[1] & ~MASK[0] & ~MASK[2]) begin : masked
            wire is_1010;
        end
        if (RATE > 2.4 && RATE < 2.6) begin : rated
            wire is_2_5;
        end
    endgenerate
    back #(.N(W + 1), .TEXT(NAME), .BITS({MASK, 1'b1}), .SPEED(RATE * 2.0), .FLAG(FAST)) u_back(.i(d[0]));
    back #(.N(2)) u_few(.i(clk));
endmodule
