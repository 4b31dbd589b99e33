// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`include "pins.vh"
module blinky(input clk, output `LED led);
    wire buffered;
    wire [`BITS-1:0] count;
    BUFFER u_buffer(.I(clk), .O(buffered));
    counter u_counter(.clk(buffered), .count(count));
    assign led = count[`BITS-1 -: 2];
endmodule
module unused;
endmodule
