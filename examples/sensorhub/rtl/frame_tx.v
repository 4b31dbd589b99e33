// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`include "hub_defs.vh"
`default_nettype none

// Answers a request with a frame of four bytes: start byte, status, data, CRC over these two.
module frame_tx (
    input  wire       clk,
    input  wire       rst_n,
    input  wire       start,
    input  wire [7:0] status,
    input  wire [7:0] rdata,
    output reg  [7:0] byte_data,
    output reg        byte_valid,
    input  wire       byte_full
);

    localparam IDLE     = 3'd0;
    localparam PUT_SOF  = 3'd1;
    localparam PUT_STAT = 3'd2;
    localparam PUT_DATA = 3'd3;
    localparam PUT_CRC  = 3'd4;

    reg  [2:0] state;
    reg  [7:0] held_status;
    reg  [7:0] held_data;
    wire [7:0] crc;

    crc8 u_crc (
        .clk    (clk),
        .clear  (state == IDLE),
        .enable (byte_valid && (state == PUT_STAT || state == PUT_DATA)),
        .data   (byte_data),
        .crc    (crc)
    );

    always @*
        case (state)
            PUT_SOF:  byte_data = `SOF_REPLY;
            PUT_STAT: byte_data = held_status;
            PUT_DATA: byte_data = held_data;
            default:  byte_data = crc;
        endcase

    always @* byte_valid = state != IDLE && !byte_full;

    always @(posedge clk or negedge rst_n)
        if (!rst_n) begin
            state       <= IDLE;
            held_status <= 8'd0;
            held_data   <= 8'd0;
        end else if (state == IDLE) begin
            if (start) begin
                held_status <= status;
                held_data   <= rdata;
                state       <= PUT_SOF;
            end
        end else if (byte_valid)
            state <= state == PUT_CRC ? IDLE : state + 3'd1;

endmodule

`default_nettype wire
