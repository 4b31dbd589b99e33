// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module fsm(input logic clk, input logic go, output state_t state);
    always_ff @(posedge clk) state <= next_of(state, go);
endmodule
