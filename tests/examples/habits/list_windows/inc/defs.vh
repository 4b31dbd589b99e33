// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`ifndef DEFS_VH
`define DEFS_VH
`define ADD(x, y) \
    ((x) + \
     (y))
`endif
