// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input clk, output [2:0] q);
    counter u_counter(.clk(clk), .q(q));
    defparam u_counter.WIDTH = 3;
    wrapper u_wrapper(.clk(clk));
endmodule
module wrapper(input clk);
    wire [1:0] q;
    counter u_counter(.clk(clk), .q(q));
    defparam u_counter.WIDTH = 2, u_counter.STEP = 3;
endmodule
module counter(clk, q);
    parameter WIDTH = 8;
    parameter STEP = 1;
    input              clk;
    output [WIDTH-1:0] q;
    reg    [WIDTH-1:0] q;
    always @(posedge clk) q = q + STEP;
endmodule
