// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`include "hub_defs.vh"
`default_nettype none

// Finds request frames in the received bytes: start byte, command, address, data, CRC over the
// three bytes between. A frame with a wrong CRC is dropped and counted.
module frame_rx (
    input  wire       clk,
    input  wire       rst_n,
    input  wire [7:0] byte_data,
    input  wire       byte_valid,
    input  wire       byte_error,
    output reg  [7:0] cmd,
    output reg  [7:0] addr,
    output reg  [7:0] wdata,
    output reg        request,
    output reg  [7:0] error_count
);

    localparam WAIT_SOF = 3'd0;
    localparam GET_CMD  = 3'd1;
    localparam GET_ADDR = 3'd2;
    localparam GET_DATA = 3'd3;
    localparam GET_CRC  = 3'd4;

    reg  [2:0] state;
    wire [7:0] crc;
    wire       in_payload = state == GET_CMD || state == GET_ADDR || state == GET_DATA;
    wire       crc_ok     = crc == byte_data;

    crc8 u_crc (
        .clk    (clk),
        .clear  (state == WAIT_SOF),
        .enable (byte_valid && in_payload),
        .data   (byte_data),
        .crc    (crc)
    );

    always @(posedge clk or negedge rst_n)
        if (!rst_n) begin
            state       <= WAIT_SOF;
            cmd         <= 8'd0;
            addr        <= 8'd0;
            wdata       <= 8'd0;
            request     <= 1'b0;
            error_count <= 8'd0;
        end else begin
            request <= 1'b0;
            if (byte_error) begin
                state       <= WAIT_SOF;
                error_count <= error_count + 8'd1;
            end else if (byte_valid)
                case (state)
                    WAIT_SOF:
                        if (byte_data == `SOF_REQUEST)
                            state <= GET_CMD;
                    GET_CMD: begin
                        cmd   <= byte_data;
                        state <= GET_ADDR;
                    end
                    GET_ADDR: begin
                        addr  <= byte_data;
                        state <= GET_DATA;
                    end
                    GET_DATA: begin
                        wdata <= byte_data;
                        state <= GET_CRC;
                    end
                    GET_CRC: begin
                        request <= crc_ok;
                        if (!crc_ok)
                            error_count <= error_count + 8'd1;
                        state <= WAIT_SOF;
                    end
                    default: state <= WAIT_SOF;
                endcase
        end

endmodule

`default_nettype wire
