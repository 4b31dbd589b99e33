// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`ifndef TYPES_SVH
`define TYPES_SVH
typedef logic [1:0] word_t;
`endif
