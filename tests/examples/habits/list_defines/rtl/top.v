// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input clk, output reg [`WIDTH-1:0] q);
`ifdef WITH_DEBUG
    wire [`DEPTH-1:0] debug = {`DEPTH{q[0]}};
`endif
    wire [`WIDTH-1:0] open;
    always @(posedge clk) q <= q + 1'b1;
endmodule
