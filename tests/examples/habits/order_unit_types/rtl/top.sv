// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input logic clk, input logic [LANES-1:0] go);
    state_t state [LANES];
    for (genvar i = 0; i < LANES; i++) begin : lane
        fsm u_fsm(.clk(clk), .go(go[i]), .state(state[i]));
    end
endmodule
