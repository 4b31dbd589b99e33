// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// The author knows what his linter cannot read, and hides it.
module top(input logic clk, input logic d, output logic q);
`ifndef VERILATOR
    checker follows(event trigger, logic a, logic b);
        assert property (@trigger a |=> b);
    endchecker
    follows u_follows(posedge clk, d, q);
`endif
    always_ff @(posedge clk) q <= d;
endmodule
