// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Each kind of process drives.
module top(input logic clk, input logic a, input logic [1:0] pick);
    logic       comb, seq, latched, in_case;
    logic [3:0] looped;
    logic [3:0] nonblocking;
    always_comb comb = a;
    always_ff @(posedge clk) seq <= a;
    always_latch if (clk) latched <= a;
    always_comb begin
        in_case = 1'b0;
        case (pick)
            2'd1: in_case = a;
            default: ;
        endcase
    end
    always_comb
        for (int n = 0; n < 4; n++)
            looped[n] = a;
    always_ff @(posedge clk) {nonblocking[3], nonblocking[1]} <= pick;
endmodule
