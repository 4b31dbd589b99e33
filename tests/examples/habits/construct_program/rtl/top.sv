// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input logic clk, output logic q);
    always_ff @(posedge clk) q <= ~q;
endmodule
