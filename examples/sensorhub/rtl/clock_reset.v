// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`default_nettype none

// Clocks of the board: 50 MHz in, 100 MHz for the system, 10 MHz for the display, and a reset for
// each that is released when the PLL has locked.
module clock_reset (
    input  wire clk_pad,
    input  wire rst_n_pad,
    output wire clk_sys,
    output wire rst_sys_n,
    output wire clk_disp,
    output wire rst_disp_n,
    output wire pll_locked
);

    wire clk_in;
    wire rst_n_in;
    wire pll_sys;
    wire pll_disp;

    KX_IBUF u_ibuf_clk (.I(clk_pad),   .O(clk_in));
    KX_IBUF u_ibuf_rst (.I(rst_n_pad), .O(rst_n_in));

    // VCO at 1 GHz.
    KX_PLL #(
        .CLKFBOUT_MULT  (20),
        .CLKOUT0_DIVIDE (10),
        .CLKOUT1_DIVIDE (100)
    ) u_pll (
        .CLKIN   (clk_in),
        .RST     (!rst_n_in),
        .CLKOUT0 (pll_sys),
        .CLKOUT1 (pll_disp),
        .LOCKED  (pll_locked)
    );

    KX_BUFG u_bufg_sys  (.I(pll_sys),  .O(clk_sys));
    KX_BUFG u_bufg_disp (.I(pll_disp), .O(clk_disp));

    wire arst_n = rst_n_in & pll_locked;

    reset_sync u_rst_sys  (.clk(clk_sys),  .arst_n(arst_n), .rst_n(rst_sys_n));
    reset_sync u_rst_disp (.clk(clk_disp), .arst_n(arst_n), .rst_n(rst_disp_n));

endmodule

`default_nettype wire
