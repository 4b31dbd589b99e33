// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`include "hub_defs.vh"
`default_nettype none

// Sensor hub: a host computer reads a converter and four buttons and sets three LED outputs and a
// display over a serial line.
module hub_top #(
    parameter BAUD            = 115200,
    parameter SAMPLE_CLOCKS   = `SYSTEM_CLOCK_HZ / 10000,
    parameter DEBOUNCE_CLOCKS = `SYSTEM_CLOCK_HZ / 1000,
    parameter PWM_CLOCKS      = `SYSTEM_CLOCK_HZ / 255000,
    parameter SCAN_CLOCKS     = 10000
) (
    input  wire       clk_50m,
    input  wire       rst_n,
    input  wire       uart_rxd,
    output wire       uart_txd,
    input  wire [3:0] button,
    output wire [2:0] led,
    output wire       adc_cs_n,
    output wire       adc_sclk,
    output wire       adc_mosi,
    input  wire       adc_miso,
`ifdef WITH_DISPLAY
    output wire [6:0] segment_n,
    output wire [3:0] digit_n,
`endif
    output wire       locked
);

    // Left open on purpose: a virtual I/O core drives these nets in the laboratory. Without one the
    // synthesis ties them to 0 and removes the logic behind them.
    wire       dbg_duty_force;
    wire [7:0] dbg_duty;
    wire       dbg_sample_force;
    wire       dbg_lamp_test;

    wire        clk_sys;
    wire        rst_sys_n;
    wire        clk_disp;
    wire        rst_disp_n;
    wire        tick_x16;
    wire        tick_sample;
    wire        tick_debounce;
    wire        tick_pwm;
    wire [7:0]  rx_data;
    wire        rx_valid;
    wire        rx_error;
    wire [7:0]  cmd;
    wire [7:0]  addr;
    wire [7:0]  wdata;
    wire        request;
    wire [7:0]  error_count;
    wire        reply;
    wire [7:0]  status;
    wire [7:0]  rdata;
    wire [7:0]  reply_data;
    wire        reply_valid;
    wire        reply_full;
    wire [7:0]  tx_data;
    wire        tx_empty;
    wire        tx_ready;
    wire [1:0]  ctrl;
    wire [23:0] duty;
    wire [15:0] show;
    wire [3:0]  button_state;
    wire [11:0] sample;
    wire        sample_valid;

    clock_reset u_clock (
        .clk_pad    (clk_50m),
        .rst_n_pad  (rst_n),
        .clk_sys    (clk_sys),
        .rst_sys_n  (rst_sys_n),
        .clk_disp   (clk_disp),
        .rst_disp_n (rst_disp_n),
        .pll_locked (locked)
    );

    tick_gen #(.PERIOD(SAMPLE_CLOCKS)) u_tick_sample (
        .clk(clk_sys), .rst_n(rst_sys_n), .tick(tick_sample)
    );
    tick_gen #(.PERIOD(DEBOUNCE_CLOCKS)) u_tick_debounce (
        .clk(clk_sys), .rst_n(rst_sys_n), .tick(tick_debounce)
    );
    tick_gen #(.PERIOD(PWM_CLOCKS)) u_tick_pwm (
        .clk(clk_sys), .rst_n(rst_sys_n), .tick(tick_pwm)
    );

    // Serial line

    baud_gen #(
        .CLOCK_HZ (`SYSTEM_CLOCK_HZ),
        .BAUD     (BAUD)
    ) u_baud (
        .clk      (clk_sys),
        .rst_n    (rst_sys_n),
        .tick_x16 (tick_x16)
    );

    uart_rx u_uart_rx (
        .clk           (clk_sys),
        .rst_n         (rst_sys_n),
        .tick_x16      (tick_x16),
        .rxd           (uart_rxd),
        .data          (rx_data),
        .valid         (rx_valid),
        .framing_error (rx_error)
    );

    frame_rx u_frame_rx (
        .clk         (clk_sys),
        .rst_n       (rst_sys_n),
        .byte_data   (rx_data),
        .byte_valid  (rx_valid),
        .byte_error  (rx_error),
        .cmd         (cmd),
        .addr        (addr),
        .wdata       (wdata),
        .request     (request),
        .error_count (error_count)
    );

    frame_tx u_frame_tx (
        .clk        (clk_sys),
        .rst_n      (rst_sys_n),
        .start      (reply),
        .status     (status),
        .rdata      (rdata),
        .byte_data  (reply_data),
        .byte_valid (reply_valid),
        .byte_full  (reply_full)
    );

    sync_fifo #(
        .WIDTH      (8),
        .ADDR_WIDTH (4)
    ) u_tx_fifo (
        .clk     (clk_sys),
        .rst_n   (rst_sys_n),
        .wr_data (reply_data),
        .wr_en   (reply_valid),
        .full    (reply_full),
        .rd_data (tx_data),
        .rd_en   (tx_ready),
        .empty   (tx_empty)
    );

    uart_tx u_uart_tx (
        .clk      (clk_sys),
        .rst_n    (rst_sys_n),
        .tick_x16 (tick_x16),
        .data     (tx_data),
        .valid    (!tx_empty),
        .ready    (tx_ready),
        .txd      (uart_txd)
    );

    // Registers

    reg_file u_regs (
        .clk         (clk_sys),
        .rst_n       (rst_sys_n),
        .request     (request),
        .cmd         (cmd),
        .addr        (addr),
        .wdata       (wdata),
        .reply       (reply),
        .status      (status),
        .rdata       (rdata),
        .buttons     (button_state),
        .sample      (sample),
        .error_count (error_count),
        .ctrl        (ctrl),
        .duty        (duty),
        .show        (show)
    );

    // Converter

    adc_sampler u_adc (
        .clk        (clk_sys),
        .rst_n      (rst_sys_n),
        .tick       (tick_sample),
        .enable     (ctrl[`CTRL_SAMPLE] || dbg_sample_force),
        .mean       (sample),
        .mean_valid (sample_valid),
        .adc_cs_n   (adc_cs_n),
        .adc_sclk   (adc_sclk),
        .adc_mosi   (adc_mosi),
        .adc_miso   (adc_miso)
    );

    // LEDs and buttons

    genvar i;

    generate
        for (i = 0; i < 3; i = i + 1) begin : led_channel
            wire [7:0] level = dbg_duty_force ? dbg_duty : duty[i*8 +: 8];

            pwm_channel u_pwm (
                .clk   (clk_sys),
                .rst_n (rst_sys_n),
                .step  (tick_pwm),
                .duty  (level),
                .out   (led[i])
            );
        end
        for (i = 0; i < 4; i = i + 1) begin : button_channel
            debouncer u_debouncer (
                .clk     (clk_sys),
                .rst_n   (rst_sys_n),
                .tick    (tick_debounce),
                .contact (button[i]),
                .state   (button_state[i])
            );
        end
    endgenerate

    // Display

`ifdef WITH_DISPLAY
    wire [15:0] shown_sys = ctrl[`CTRL_SHOW_REG] ? show : {4'd0, sample};
    wire [15:0] shown_disp;

    cdc_bus #(
        .WIDTH (16)
    ) u_cdc (
        .src_clk   (clk_sys),
        .src_rst_n (rst_sys_n),
        .src_data  (shown_sys),
        .dst_clk   (clk_disp),
        .dst_rst_n (rst_disp_n),
        .dst_data  (shown_disp)
    );

    seven_seg #(
        .SCAN_CLOCKS (SCAN_CLOCKS)
    ) u_display (
        .clk       (clk_disp),
        .rst_n     (rst_disp_n),
        .value     (shown_disp),
        .lamp_test (dbg_lamp_test),
        .segment_n (segment_n),
        .digit_n   (digit_n)
    );
`endif

endmodule

`default_nettype wire
