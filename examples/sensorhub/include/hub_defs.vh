// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Names shared by all modules of the sensor hub.
`ifndef HUB_DEFS_VH
`define HUB_DEFS_VH

// The project defines SYSTEM_CLOCK_HZ for the board; this is the reference board.
`ifndef SYSTEM_CLOCK_HZ
`define SYSTEM_CLOCK_HZ 100000000
`endif

`define HUB_ID          8'h5E

// Frame format on the serial line.
`define SOF_REQUEST     8'hA5
`define SOF_REPLY       8'h5A
`define CMD_READ        8'h52
`define CMD_WRITE       8'h57

`define STATUS_OK       8'h00
`define STATUS_BAD_CMD  8'h01
`define STATUS_BAD_ADDR 8'h02

// Register addresses.
`define REG_ID          8'h00
`define REG_CTRL        8'h01
`define REG_PWM0        8'h02
`define REG_PWM1        8'h03
`define REG_PWM2        8'h04
`define REG_SHOW_LO     8'h05
`define REG_SHOW_HI     8'h06
`define REG_BUTTONS     8'h07
`define REG_SAMPLE_LO   8'h08
`define REG_SAMPLE_HI   8'h09
`define REG_ERRORS      8'h0A

// Bits of the control register.
`define CTRL_SAMPLE     0
`define CTRL_SHOW_REG   1

`endif
