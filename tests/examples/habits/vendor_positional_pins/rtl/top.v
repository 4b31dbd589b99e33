// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input clk, input [7:0] a, output [15:0] p, output carry);
    wire buffered, free;
    wire [7:0] ra;
    GLOBAL_BUFFER g0(buffered, clk);
    DSP_MULT #(8, 8, "SIGNED") u_mult(p, ra, {4'd0, a[3:0]}, buffered);
    ADDER_CELL #(1) u_add[1:0] ({carry, ra[0]}, a[1:0], , buffered);
    DEFPARAM_CELL u_cell(ra[7:4]);
    defparam u_cell.INIT = 64'h0123_4567_89ab_cdef;
    defparam u_cell.MODE = "FAST";
endmodule
