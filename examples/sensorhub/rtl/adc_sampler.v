// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`default_nettype none

// Reads a 12-bit converter over SPI on every tick (four zero bits, then the value) and gives the
// mean of four conversions.
module adc_sampler (
    input  wire        clk,
    input  wire        rst_n,
    input  wire        tick,
    input  wire        enable,
    output reg  [11:0] mean,
    output reg         mean_valid,
    output wire        adc_cs_n,
    output wire        adc_sclk,
    output wire        adc_mosi,
    input  wire        adc_miso
);

    wire [15:0] word;
    wire        busy;
    wire        done;
    wire        start = tick && enable && !busy;

    reg  [13:0] sum;
    reg  [1:0]  count;
    wire [13:0] next_sum = sum + {2'b00, word[11:0]};

    spi_master #(
        .WIDTH       (16),
        .HALF_PERIOD (4)
    ) u_spi (
        .clk      (clk),
        .rst_n    (rst_n),
        .start    (start),
        .tx_data  (16'h0000),
        .rx_data  (word),
        .busy     (busy),
        .done     (done),
        .spi_cs_n (adc_cs_n),
        .spi_sclk (adc_sclk),
        .spi_mosi (adc_mosi),
        .spi_miso (adc_miso)
    );

    always @(posedge clk or negedge rst_n)
        if (!rst_n) begin
            sum        <= 14'd0;
            count      <= 2'd0;
            mean       <= 12'd0;
            mean_valid <= 1'b0;
        end else begin
            mean_valid <= 1'b0;
            if (done) begin
                count <= count + 2'd1;
                sum   <= next_sum;
                if (count == 2'd3) begin
                    sum        <= 14'd0;
                    mean       <= next_sum[13:2];
                    mean_valid <= 1'b1;
                end
            end
        end

endmodule

`default_nettype wire
