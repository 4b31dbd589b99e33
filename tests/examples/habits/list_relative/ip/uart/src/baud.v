// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module baud #(parameter BITS = 8) (input clk, output tick);
    reg [BITS-1:0] count;
    always @(posedge clk) count <= count + 1'b1;
    assign tick = &count;
endmodule
