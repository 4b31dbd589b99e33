// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// A slip in what is hardware stays an error, at its place.
module top(input clk, input d, output reg q);
    // synthesis translate_off
    initial q = 1'b0
    // synthesis translate_on
    wire a = d
    always @(posedge clk) q <= a;
endmodule
