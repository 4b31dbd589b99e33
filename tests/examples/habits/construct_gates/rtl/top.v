// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// A netlist of gates, as older flows hand it on.
module top(input a, input b, input s, output y, output z);
    wire n1, n2, n3, p, t;
    wire [1:0] v;
    supply0 gnd;
    supply1 vdd;
    trireg store;
    nand #(1) g1(n1, a, b), g2(n2, n1, s);
    xor (strong0, weak1) g3(n3, n1, n2);
    not g4[1:0] (v, {a, b});
    buf (y, n3);
    notif0 (t, a, s);
    nmos (p, vdd, a);
    pmos (p, gnd, a);
    mux2 u_mux(z, a, b, s);
endmodule
primitive mux2(output z, input a, b, s);
    table
        0 ? 0 : 0;
        1 ? 0 : 1;
        ? 0 1 : 0;
        ? 1 1 : 1;
        0 0 x : 0;
        1 1 x : 1;
    endtable
endprimitive
