// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`ifndef CHECKS_SVH
`define CHECKS_SVH
`define REGISTER(name, value) always_ff @(posedge clk) name <= value;
`endif
