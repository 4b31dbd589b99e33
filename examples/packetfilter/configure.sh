#!/bin/sh
# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
# Makes a configuration for each lane of this example without a window.
#
# usage: sh configure.sh FOLDER
#
# Writes to FOLDER:
#   lane0.tarn ... lane3.tarn  the configurations, checked against the design
#   lane0.json ... lane3.json  the net behind each bit, for programs that talk to the cores
#   lane0.sv                   the cores of lane 0 for a simulation beside the test bench pf_tb
set -eu

design=$(dirname -- "$0")/packetfilter.json

# What is there to read in the first lane, and what to drive?
tarn nets --for in --wildcard "$design" '*lane\[0\].u_lane/header*'
tarn nets --for out --in 'pf_top/lane[0].u_lane' "$design" ""

# The first lane, step by step.
rm -f -- "$1/lane0.tarn"
tarn edit --new "$1/lane0.tarn" "$design" \
    add-in 0 add-in 0 add-in 0 \
    signals 0.in0 --wildcard '*lane\[0\].u_lane/header.[kp]*' \
    signals 0.in0 'pf_top/lane[0].u_lane/header_valid' \
    signals 0.in1 'pf_top/lane[0].u_lane/verdict[1:0]' \
                  'pf_top/lane[0].u_lane/verdict_valid' 'pf_top/lane[0].u_lane/runt' \
    signals 0.in2 --wildcard '*lane\[0\].u_lane/events\[*' \
    add-out 0 add-out 0 \
    signals 0.out0 'pf_top/dbg_block[0]' \
    signals 0.out1 'pf_top/lane[0].u_lane/dbg_force_verdict' \
    signals 0.out1 'pf_top/lane[0].u_lane/dbg_verdict[1:0]' \
    value 0.out1 0x1 \
    clock 0 pf_top/clk

# The other lanes have the same nets under other names.
for lane in 1 2 3; do
    tarn show --json "$1/lane0.tarn" |
        sed -e "s/lane\[0\]/lane[$lane]/" -e "s/dbg_block\[0\]/dbg_block[$lane]/" |
        tarn write "$1/lane$lane.tarn"
done

# Ends the script with exit code 1 when something does not fit the design.
tarn check "$design" "$1"/lane?.tarn

for lane in 0 1 2 3; do
    tarn export map --format json -o "$1/lane$lane.json" "$1/lane$lane.tarn"
done
tarn export simulation --tb-path pf_tb.dut -o "$1/lane0.sv" "$design" "$1/lane0.tarn"
