// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input [`WIDTH-1:0] a, output [`WIDTH-1:0] y);
`include "local.vh"
    add u_add(.a(a), .y(y));
`ifdef DEBUG
    wire debug;
`endif
endmodule
