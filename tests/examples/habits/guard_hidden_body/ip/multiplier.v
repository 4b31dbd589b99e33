// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// A generated core: the netlist comes from the generator, the body is for the simulator.
module multiplier(clk, a, b, p);
    input        clk;
    input  [3:0] a, b;
    output [7:0] p;
// synthesis translate_off
    MULT_V3_0 #(.C_WIDTH(4), .C_FAMILY("kx")) inst(.CLK(clk), .A(a), .B(b), .P(p));
// synthesis translate_on
endmodule
