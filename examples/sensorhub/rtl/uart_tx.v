// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`default_nettype none

// Serial transmitter, 8 data bits, no parity, one stop bit. Takes a byte when valid and ready.
module uart_tx (
    input  wire       clk,
    input  wire       rst_n,
    input  wire       tick_x16,
    input  wire [7:0] data,
    input  wire       valid,
    output wire       ready,
    output wire       txd
);

    reg [9:0] shift;
    reg [3:0] bits_left;
    reg [3:0] phase;

    assign ready = bits_left == 4'd0;
    assign txd   = shift[0];

    always @(posedge clk or negedge rst_n)
        if (!rst_n) begin
            shift     <= 10'h3FF;
            bits_left <= 4'd0;
            phase     <= 4'd0;
        end else if (ready) begin
            phase <= 4'd0;
            if (valid) begin
                shift     <= {1'b1, data, 1'b0};
                bits_left <= 4'd10;
            end
        end else if (tick_x16) begin
            phase <= phase + 4'd1;
            if (phase == 4'd15) begin
                shift     <= {1'b1, shift[9:1]};
                bits_left <= bits_left - 4'd1;
            end
        end

endmodule

`default_nettype wire
