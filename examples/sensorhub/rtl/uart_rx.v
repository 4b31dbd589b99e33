// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`default_nettype none

// Serial receiver, 8 data bits, no parity, one stop bit. Each bit is the majority of three samples
// around its middle.
module uart_rx (
    input  wire       clk,
    input  wire       rst_n,
    input  wire       tick_x16,
    input  wire       rxd,
    output reg  [7:0] data,
    output reg        valid,
    output reg        framing_error
);

    localparam IDLE  = 2'd0;
    localparam START = 2'd1;
    localparam BITS  = 2'd2;
    localparam STOP  = 2'd3;

    reg [1:0] rx_sync;
    reg [1:0] state;
    reg [3:0] phase;
    reg [2:0] bit_index;
    reg [2:0] samples;
    reg [7:0] shift;

    wire line     = rx_sync[1];
    wire middle   = phase == 4'd9;
    wire majority = (samples[0] & samples[1]) | (samples[1] & samples[2]) | (samples[0] & samples[2]);

    always @(posedge clk or negedge rst_n)
        if (!rst_n)
            rx_sync <= 2'b11;
        else
            rx_sync <= {rx_sync[0], rxd};

    always @(posedge clk or negedge rst_n)
        if (!rst_n)
            samples <= 3'b111;
        else if (tick_x16)
            samples <= {samples[1:0], line};

    always @(posedge clk or negedge rst_n)
        if (!rst_n) begin
            state         <= IDLE;
            phase         <= 4'd0;
            bit_index     <= 3'd0;
            shift         <= 8'd0;
            data          <= 8'd0;
            valid         <= 1'b0;
            framing_error <= 1'b0;
        end else begin
            valid         <= 1'b0;
            framing_error <= 1'b0;
            if (tick_x16) begin
                phase <= phase + 4'd1;
                case (state)
                    IDLE:
                        if (!line) begin
                            phase <= 4'd0;
                            state <= START;
                        end
                    START:
                        if (middle && majority)
                            state <= IDLE;
                        else if (phase == 4'd15) begin
                            bit_index <= 3'd0;
                            state     <= BITS;
                        end
                    BITS: begin
                        if (middle)
                            shift <= {majority, shift[7:1]};
                        if (phase == 4'd15) begin
                            bit_index <= bit_index + 3'd1;
                            if (bit_index == 3'd7)
                                state <= STOP;
                        end
                    end
                    STOP:
                        if (middle) begin
                            data          <= shift;
                            valid         <= majority;
                            framing_error <= !majority;
                            state         <= IDLE;
                        end
                endcase
            end
        end

endmodule

`default_nettype wire
