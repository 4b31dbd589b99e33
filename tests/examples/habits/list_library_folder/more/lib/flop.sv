// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module flop(input logic clk, input logic d, output logic q);
    always_ff @(posedge clk) q <= d;
endmodule
