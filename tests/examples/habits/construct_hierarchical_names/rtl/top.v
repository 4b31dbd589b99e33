// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// A look into another module, up and down.
module top(input clk, output tap, output up);
    parameter LEVEL = 2;
    leaf u_leaf(.clk(clk));
    assign tap = u_leaf.count[1];
    assign up = top.u_leaf.bit_of_count;
    wire [u_leaf.SIZE-1:0] sized;
endmodule
module leaf(input clk);
    localparam SIZE = 3;
    reg [SIZE-1:0] count;
    wire bit_of_count = count[0];
    always @(posedge clk) count <= count + top.LEVEL;
endmodule
