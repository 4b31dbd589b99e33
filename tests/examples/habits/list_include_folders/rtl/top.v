// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top;
`include "a.vh"
`include "b.vh"
`include "c.vh"
`include "d.vh"
`include "beside.vh"
endmodule
