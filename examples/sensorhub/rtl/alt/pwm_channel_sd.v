// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`default_nettype none

// First-order sigma-delta modulator with the ports of the pulse width modulator: less ripple for
// analogue loads. Enable it in the project in place of rtl/pwm_channel.v.
module pwm_channel (
    input  wire       clk,
    input  wire       rst_n,
    input  wire       step,
    input  wire [7:0] duty,
    output wire       out
);

    reg [8:0] accumulator;

    assign out = accumulator[8];

    always @(posedge clk or negedge rst_n)
        if (!rst_n)
            accumulator <= 9'd0;
        else if (step)
            accumulator <= {1'b0, accumulator[7:0]} + {1'b0, duty} + {8'd0, &duty};

endmodule

`default_nettype wire
