// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// The JTAG primitive in a branch that is not taken.
module top(input a);
    generate if (0) begin : never tap u(.tdi(a)); end endgenerate
endmodule

module tap(input tdi);
    wire tdo;
    KX_JTAG u_jtag(.TDI(tdi), .TDO(tdo));
endmodule
