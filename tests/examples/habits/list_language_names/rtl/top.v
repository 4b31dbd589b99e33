// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Words of SystemVerilog that were names before it.
module top(input clk, input bit, output reg do);
    wire [3:0] byte;
    reg        final;
    assign byte[0] = bit;
    always @(posedge clk) begin
        final <= byte[0];
        do    <= final;
    end
endmodule
