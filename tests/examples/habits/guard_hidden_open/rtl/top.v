// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input clk, input d, output q);
    delay u_delay(.clk(clk), .d(d), .q(q));
endmodule
