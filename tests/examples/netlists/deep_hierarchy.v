// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Nodes below nodes, the same module in several places.
module top(input a, output y);
    wire m;
    middle u0(.i(a), .o(m));
    middle u1(.i(m), .o(y));
endmodule

module middle(input i, output o);
    wire t;
    bottom lower(.i(i), .o(t));
    bottom upper(.i(t), .o(o));
endmodule

module bottom(input i, output o);
    wire spare;
    not n0(o, i);
endmodule
