// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input clk, input [`DATA_RANGE] d, output [`DATA_RANGE] q);
    sub u_sub(.clk(clk), .d(d), .q(q));
endmodule
