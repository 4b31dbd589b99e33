// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`timescale 1ns/1ps
`celldefine
module ND2(A, B, Z);
    input  A, B;
    output Z;
    nand (Z, A, B);
    specify
        (A => Z) = (0.1, 0.1);
        (B => Z) = (0.1, 0.1);
    endspecify
endmodule
`endcelldefine
`celldefine
module IV(A, Z);
    input  A;
    output Z;
    not (Z, A);
endmodule
`endcelldefine
// Not used: no second top.
module XR2(A, B, Z);
    input  A, B;
    output Z;
    xor (Z, A, B);
endmodule
