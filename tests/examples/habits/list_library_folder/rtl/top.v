// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input clk, input d, output q);
    sync2 u_sync(.clk(clk), .d(d), .q(q));
    SOME_PRIMITIVE u_prim(.C(clk));
endmodule
