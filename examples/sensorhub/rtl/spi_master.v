// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`default_nettype none

// SPI master, mode 0, most significant bit first. A transfer of WIDTH bits starts with start while
// not busy; done pulses when rx_data is complete.
module spi_master #(
    parameter WIDTH       = 16,
    parameter HALF_PERIOD = 4
) (
    input  wire             clk,
    input  wire             rst_n,
    input  wire             start,
    input  wire [WIDTH-1:0] tx_data,
    output reg  [WIDTH-1:0] rx_data,
    output reg              busy,
    output reg              done,
    output reg              spi_cs_n,
    output reg              spi_sclk,
    output wire             spi_mosi,
    input  wire             spi_miso
);

    reg [WIDTH-1:0] shift;
    reg [7:0]       divider;
    reg [7:0]       bits_left;

    assign spi_mosi = shift[WIDTH-1];

    always @(posedge clk or negedge rst_n)
        if (!rst_n) begin
            rx_data   <= {WIDTH{1'b0}};
            busy      <= 1'b0;
            done      <= 1'b0;
            spi_cs_n  <= 1'b1;
            spi_sclk  <= 1'b0;
            shift     <= {WIDTH{1'b0}};
            divider   <= 8'd0;
            bits_left <= 8'd0;
        end else begin
            done <= 1'b0;
            if (!busy) begin
                spi_cs_n <= 1'b1;
                if (start) begin
                    busy      <= 1'b1;
                    spi_cs_n  <= 1'b0;
                    shift     <= tx_data;
                    divider   <= 8'd0;
                    bits_left <= WIDTH;
                end
            end else if (divider != HALF_PERIOD - 1)
                divider <= divider + 8'd1;
            else begin
                divider  <= 8'd0;
                spi_sclk <= !spi_sclk;
                if (!spi_sclk)
                    rx_data <= {rx_data[WIDTH-2:0], spi_miso};
                else begin
                    shift     <= {shift[WIDTH-2:0], 1'b0};
                    bits_left <= bits_left - 8'd1;
                    if (bits_left == 8'd1) begin
                        busy <= 1'b0;
                        done <= 1'b1;
                    end
                end
            end
        end

endmodule

`default_nettype wire
