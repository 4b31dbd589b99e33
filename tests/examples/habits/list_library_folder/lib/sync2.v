// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module sync2(input clk, input d, output q);
    wire meta;
    flop u_first(.clk(clk), .d(d), .q(meta));
    flop u_second(.clk(clk), .d(meta), .q(q));
endmodule
