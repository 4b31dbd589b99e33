// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Prints the ports of the exported module beside the nets of sensorhub.tarn as written by hand: a
// line for each time at which one of them changes, with the same values in both halves.
`timescale 1ns / 1ps

/* verilator lint_off MULTITOP */
module hub_monitor;
    wire [9:0]  in00 = {hub_tb.dut.rx_data, hub_tb.dut.rx_valid, hub_tb.dut.rx_error};
    wire [11:0] in01 = {hub_tb.dut.u_frame_rx.state, hub_tb.dut.u_frame_rx.crc_ok,
                        hub_tb.dut.error_count};
    wire [15:0] in02 = {hub_tb.dut.sample, hub_tb.dut.button_state};
    wire [18:0] in03 = {hub_tb.dut.led_channel[0].level,
                        hub_tb.dut.led_channel[0].u_pwm.active_duty, hub_tb.dut.led};
    wire [8:0]  in11 = {hub_tb.dut.u_display.digit, hub_tb.dut.u_display.glyph};

    initial
        $monitor("seen %b %b %b %b %b %b %b %b %b %b | %b %b %b %b %b %b %b %b %b %b",
                 tarn_probes.core0.in0, tarn_probes.core0.in1, tarn_probes.core0.in2,
                 tarn_probes.core0.in3, tarn_probes.core1.in0, tarn_probes.core1.in1,
                 tarn_probes.core0.out0_synced, tarn_probes.core0.out1_synced,
                 tarn_probes.core0.out2_synced, tarn_probes.core1.out0_synced,
                 in00, in01, in02, in03, hub_tb.dut.shown_disp, in11,
                 hub_tb.dut.dbg_duty_force, hub_tb.dut.dbg_duty, hub_tb.dut.dbg_sample_force,
                 hub_tb.dut.dbg_lamp_test);
endmodule
