// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input refclk, input [7:0] din, output [7:0] dout);
    wire clk, locked, full;
    pll_ip u_pll(.refclk(refclk), .outclk_0(clk), .locked(locked));
    fifo_ip u_fifo(.clk(clk), .din(din), .wr_en(!full), .dout(dout), .full(full));
endmodule
