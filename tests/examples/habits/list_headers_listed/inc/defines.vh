// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`ifndef DEFINES_VH
`define DEFINES_VH
`define WIDTH 5
`endif
