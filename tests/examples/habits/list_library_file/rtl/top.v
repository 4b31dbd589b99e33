// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input a, input b, output y);
    wire n;
    ND2 u_nand(.A(a), .B(b), .Z(n));
    IV  u_inv(.A(n), .Z(y));
endmodule
