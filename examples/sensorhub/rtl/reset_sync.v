// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`default_nettype none

// Asserts the reset at once and releases it in step with the clock.
module reset_sync #(
    parameter STAGES = 3
) (
    input  wire clk,
    input  wire arst_n,
    output wire rst_n
);

    reg [STAGES-1:0] chain;

    always @(posedge clk or negedge arst_n)
        if (!arst_n)
            chain <= {STAGES{1'b0}};
        else
            chain <= {chain[STAGES-2:0], 1'b1};

    assign rst_n = chain[STAGES-1];

endmodule

`default_nettype wire
