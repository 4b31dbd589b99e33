// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Empty bodies, as a core generator writes them for the synthesis.
(* black_box, syn_black_box = 1 *)
module fifo_ip(clk, din, wr_en, dout, full) /* synthesis syn_black_box black_box_pad_pin="" */;
    input        clk;
    input  [7:0] din;
    input        wr_en;
    output [7:0] dout;
    output       full;
endmodule

module pll_ip(input refclk, output outclk_0, output locked); // synthesis black_box
endmodule
