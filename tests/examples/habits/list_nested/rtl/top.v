// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input [1:0] a, output [2:0] s);
    adder u_adder(a, 2'd1, s);
endmodule
