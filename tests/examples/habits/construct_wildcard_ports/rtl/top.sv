// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module leaf #(parameter int W = 1) (input logic clk, input logic rst_n, input logic [W-1:0] d,
                                    output logic [W-1:0] q);
    always_ff @(posedge clk or negedge rst_n)
        if (!rst_n) q <= '0;
        else q <= d;
endmodule
module top(input logic clk, input logic rst_n, input logic [1:0] d, output logic [1:0] q);
    logic [1:0] mid;
    leaf #(2) u_first(.*, .q(mid));
    leaf #(.W(2)) u_second(.clk, .rst_n, .d(mid), .*);
    leaf u_open(.*, .d(), .q());
endmodule
