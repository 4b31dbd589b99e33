// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// The primitives of the device need no file; an input of one drives nothing.
module top(input pad_clk, input [1:0] pad_d, output [1:0] pad_q);
    wire clk_in, clk, reset, to_pad;
    wire [1:0] d;
    KX_IBUF u_clk(.I(pad_clk), .O(clk_in));
    KX_BUFG u_bufg(.I(clk_in), .O(clk));
    KX_IBUF u_d[1:0] (.I(pad_d), .O(d));
    KX_OBUF u_q0(.I(to_pad), .O(pad_q[0]));
    KX_OBUF u_q1(.I(d[1]), .O(pad_q[1]));
endmodule
