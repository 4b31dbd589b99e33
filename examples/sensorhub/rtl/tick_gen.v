// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`default_nettype none

// One-clock pulse every PERIOD clocks.
module tick_gen #(
    parameter PERIOD = 1000,
    parameter WIDTH  = 17
) (
    input  wire clk,
    input  wire rst_n,
    output reg  tick
);

    reg [WIDTH-1:0] count;

    always @(posedge clk or negedge rst_n)
        if (!rst_n) begin
            count <= {WIDTH{1'b0}};
            tick  <= 1'b0;
        end else if (count == PERIOD - 1) begin
            count <= {WIDTH{1'b0}};
            tick  <= 1'b1;
        end else begin
            count <= count + 1'b1;
            tick  <= 1'b0;
        end

endmodule

`default_nettype wire
