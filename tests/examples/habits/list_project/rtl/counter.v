// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module counter(input logic clk, output logic [`BITS-1:0] count);
    always_ff @(posedge clk) count <= count + 1'd1;
endmodule
