// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input clk, input [3:0] d, output [3:0] q);
    secret u_secret(.clk(clk), .d(d), .q(q));
endmodule
