// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`default_nettype none

// Carries a slowly changing bus into another clock domain. The word is held still while a toggle
// crosses, so that the receiver never sees a mix of two words.
module cdc_bus #(
    parameter WIDTH = 16
) (
    input  wire             src_clk,
    input  wire             src_rst_n,
    input  wire [WIDTH-1:0] src_data,
    input  wire             dst_clk,
    input  wire             dst_rst_n,
    output reg  [WIDTH-1:0] dst_data
);

    reg [WIDTH-1:0] held;
    reg             request;
    reg [1:0]       ack_sync;
    reg [2:0]       request_sync;

    wire idle    = request == ack_sync[1];
    wire arrived = request_sync[2] != request_sync[1];

    always @(posedge src_clk or negedge src_rst_n)
        if (!src_rst_n) begin
            held     <= {WIDTH{1'b0}};
            request  <= 1'b0;
            ack_sync <= 2'b00;
        end else begin
            ack_sync <= {ack_sync[0], request_sync[2]};
            if (idle && src_data != held) begin
                held    <= src_data;
                request <= !request;
            end
        end

    always @(posedge dst_clk or negedge dst_rst_n)
        if (!dst_rst_n) begin
            request_sync <= 3'b000;
            dst_data     <= {WIDTH{1'b0}};
        end else begin
            request_sync <= {request_sync[1:0], request};
            if (arrived)
                dst_data <= held;
        end

endmodule

`default_nettype wire
