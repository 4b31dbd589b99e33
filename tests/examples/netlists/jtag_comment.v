// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// The JTAG primitive in comments and in a text only.
module top(input a);
    // KX_JTAG u_jtag(.TDI(a));
    /* KX_JTAG u_other(.TDI(a)); */
    parameter NAME = "KX_JTAG u_third(.TDI(a));";
endmodule
