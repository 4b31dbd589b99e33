// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`default_nettype none

// Sixteen pulses per bit for the serial receiver and transmitter. A phase accumulator keeps the mean
// rate exact when the clock is not a multiple of the rate.
module baud_gen #(
    parameter CLOCK_HZ = 100000000,
    parameter BAUD     = 115200
) (
    input  wire clk,
    input  wire rst_n,
    output reg  tick_x16
);

    localparam STEP = BAUD * 16;

    reg  [31:0] phase;
    wire [31:0] next  = phase + STEP;
    wire        carry = next >= CLOCK_HZ;

    always @(posedge clk or negedge rst_n)
        if (!rst_n) begin
            phase    <= 32'd0;
            tick_x16 <= 1'b0;
        end else begin
            phase    <= carry ? next - CLOCK_HZ : next;
            tick_x16 <= carry;
        end

endmodule

`default_nettype wire
