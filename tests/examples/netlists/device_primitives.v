// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Primitives of the device have directions and are no nodes: an input does not drive.
module top(input pad);
    wire in;
    wire clk;
    wire probe;
    wire reset;
    wire slow;
    wire locked;
    KX_IBUF u_in(.I(pad), .O(in));
    KX_PLL #(.CLKFBOUT_MULT(8)) u_pll(.CLKIN(in), .RST(reset), .CLKOUT0(clk), .CLKOUT1(slow), .LOCKED(locked));
    KX_OBUF u_out(.I(probe), .O());
endmodule
