// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module stage(input clk, input [`WIDTH-1:0] d, output reg [`WIDTH-1:0] q);
    always @(posedge clk) q <= d;
endmodule
