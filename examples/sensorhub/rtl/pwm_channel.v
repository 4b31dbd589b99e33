// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`default_nettype none

// Pulse width modulator, 255 steps per period: duty 0 is always off, 255 always on. A new duty takes
// effect at the start of a period, so no pulse is cut.
module pwm_channel (
    input  wire       clk,
    input  wire       rst_n,
    input  wire       step,
    input  wire [7:0] duty,
    output reg        out
);

    reg [7:0] count;
    reg [7:0] active_duty;

    always @(posedge clk or negedge rst_n)
        if (!rst_n) begin
            count       <= 8'd0;
            active_duty <= 8'd0;
            out         <= 1'b0;
        end else if (step) begin
            out <= count < active_duty;
            if (count == 8'd254) begin
                count       <= 8'd0;
                active_duty <= duty;
            end else
                count <= count + 8'd1;
        end

endmodule

`default_nettype wire
