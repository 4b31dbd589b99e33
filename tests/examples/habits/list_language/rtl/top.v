// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input logic clk, output logic [3:0] q);
    always_ff @(posedge clk) q <= q + 4'd1;
endmodule
