// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// SystemVerilog in files that are called .v.
module top(input logic clk, input logic [1:0] d, output logic [1:0] q);
    typedef enum logic {IDLE, BUSY} state_t;
    state_t state;
    always_ff @(posedge clk) begin
        state <= (state == IDLE) ? BUSY : IDLE;
        q     <= d;
    end
endmodule
