#!/bin/sh
# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
# Makes the configuration of this example without a window.
#
# usage: sh configure.sh FOLDER
#
# Writes to FOLDER:
#   sensorhub.tarn  the configuration, checked against the design
#   sensorhub.csv   the net behind each bit, for programs that talk to the cores
#   sensorhub.v     the cores for a simulation beside the test bench hub_tb
set -eu

design=$(dirname -- "$0")/sensorhub.json
config=$1/sensorhub.tarn

# What is there to read around the frames, and what to drive?
tarn nets --for in --in hub_top/u_frame_rx "$design" "crc"
tarn nets --for out "$design" "dbg_"

# Core 0 watches the request on its way to the LEDs, core 1 the display.
rm -f -- "$config"
tarn edit --new "$config" "$design" \
    add-in 0 add-in 0 add-in 0 add-in 0 \
    signals 0.in0 "hub_top/rx_data[7:0]" hub_top/rx_valid hub_top/rx_error \
    signals 0.in1 "hub_top/u_frame_rx/state[2:0]" \
    signals 0.in1 hub_top/u_frame_rx/crc_ok \
    signals 0.in1 "hub_top/error_count[7:0]" \
    signals 0.in2 "hub_top/sample[11:0]" "hub_top/button_state[3:0]" \
    signals 0.in3 "hub_top/led_channel[0].level[7:0]" \
                  "hub_top/led_channel[0].u_pwm/active_duty[7:0]" "hub_top/led[2:0]" \
    add-out 0 add-out 0 add-out 0 \
    signals 0.out0 hub_top/dbg_duty_force \
    signals 0.out1 "hub_top/dbg_duty[7:0]" \
    value 0.out1 0x80 \
    signals 0.out2 hub_top/dbg_sample_force \
    clock 0 hub_top/clk_sys \
    add-core \
    add-in 1 add-in 1 \
    signals 1.in0 "hub_top/shown_disp[15:0]" \
    signals 1.in1 --wildcard 'hub_top/u_display/digit\[*' 'hub_top/u_display/glyph\[*' \
    add-out 1 \
    signals 1.out0 hub_top/dbg_lamp_test \
    clock 1 hub_top/clk_disp

# Ends the script with exit code 1 when something does not fit the design.
tarn check "$design" "$config"

tarn export map -o "$1/sensorhub.csv" "$config"
tarn export simulation --language verilog --tb-path hub_tb.dut -o "$1/sensorhub.v" "$design" \
    "$config"
