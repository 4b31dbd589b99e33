// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`default_nettype none

// Four hexadecimal digits on a multiplexed seven-segment display with common anodes: segments and
// digit lines are active low, segment a is bit 0.
module seven_seg #(
    parameter SCAN_CLOCKS = 10000
) (
    input  wire        clk,
    input  wire        rst_n,
    input  wire [15:0] value,
    input  wire        lamp_test,
    output reg  [6:0]  segment_n,
    output reg  [3:0]  digit_n
);

    wire       scan;
    reg  [1:0] digit;
    reg  [3:0] nibble;
    reg  [6:0] glyph;

    tick_gen #(
        .PERIOD (SCAN_CLOCKS)
    ) u_scan (
        .clk   (clk),
        .rst_n (rst_n),
        .tick  (scan)
    );

    always @*
        case (digit)
            2'd0:    nibble = value[3:0];
            2'd1:    nibble = value[7:4];
            2'd2:    nibble = value[11:8];
            default: nibble = value[15:12];
        endcase

    always @*
        case (nibble)
            4'h0:    glyph = 7'b0111111;
            4'h1:    glyph = 7'b0000110;
            4'h2:    glyph = 7'b1011011;
            4'h3:    glyph = 7'b1001111;
            4'h4:    glyph = 7'b1100110;
            4'h5:    glyph = 7'b1101101;
            4'h6:    glyph = 7'b1111101;
            4'h7:    glyph = 7'b0000111;
            4'h8:    glyph = 7'b1111111;
            4'h9:    glyph = 7'b1101111;
            4'hA:    glyph = 7'b1110111;
            4'hB:    glyph = 7'b1111100;
            4'hC:    glyph = 7'b0111001;
            4'hD:    glyph = 7'b1011110;
            4'hE:    glyph = 7'b1111001;
            default: glyph = 7'b1110001;
        endcase

    always @(posedge clk or negedge rst_n)
        if (!rst_n) begin
            digit     <= 2'd0;
            segment_n <= 7'h7F;
            digit_n   <= 4'hF;
        end else begin
            if (scan)
                digit <= digit + 2'd1;
            segment_n <= lamp_test ? 7'h00 : ~glyph;
            digit_n   <= ~(4'b0001 << digit);
        end

endmodule

`default_nettype wire
