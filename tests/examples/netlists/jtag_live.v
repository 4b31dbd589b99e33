// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// The JTAG primitive below the top.
module top(input a);
    tap u(.tdi(a));
endmodule

module tap(input tdi);
    wire tdo;
    KX_JTAG u_jtag(.TDI(tdi), .TDO(tdo));
endmodule
