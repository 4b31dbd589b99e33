// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Macros of the packet filter.
`ifndef PF_MACROS_SVH
`define PF_MACROS_SVH

// Size of the frame buffer of a lane in words; the project sets it for the device.
`ifndef FRAME_WORDS
`define FRAME_WORDS 64
`endif

// A register with an asynchronous reset.
`define PF_FF(q, d, rst_value)                \
    always_ff @(posedge clk or negedge rst_n) \
        if (!rst_n) q <= rst_value;           \
        else        q <= d;

`endif
