// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Functional coverage beside the hardware.
module top(input logic clk, input logic [1:0] mode, output logic [1:0] last);
    covergroup modes @(posedge clk);
        option.per_instance = 1;
        current: coverpoint mode {
            bins low    = {0, 1};
            bins high[] = {[2:3]};
            bins change = (0 => 1), (1 => 2);
        }
        cross current, last;
    endgroup
    modes u_modes = new;
    wire spare;
    always_ff @(posedge clk) last <= mode;
endmodule
