// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Abbreviations for the assertions.
module top(input logic clk, input logic [3:0] a, output logic [3:0] y);
    let is_power(x) = $onehot(x);
    let sum(x, z = 4'd1) = x + z;
    always_ff @(posedge clk) begin
        y <= a;
        assert (is_power(a));
        assert (sum(a) != 4'd0);
    end
endmodule
