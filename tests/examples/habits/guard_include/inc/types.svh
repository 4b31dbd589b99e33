// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`ifndef TYPES_SVH
`define TYPES_SVH
typedef struct packed {
    logic       valid;
    logic [1:0] code;
} request_t;
`endif // TYPES_SVH
