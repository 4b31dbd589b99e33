// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input logic clk, output logic [3:0] q);
    import bus_pkg::*;
    word_t   word;
    state_t  state;
    always_ff @(posedge clk) begin
        word  <= word + STEP;
        state <= next(state);
    end
    sub u_sub(.a(word), .q(q));
endmodule
