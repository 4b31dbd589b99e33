// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input clk, input rst_n, input d, output q);
    DFFR u_ff(.Q(q), .QN(), .D(d), .CK(clk), .RN(rst_n));
endmodule
