// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`celldefine
module LOGIC_INV (A, Y);
input A;
output Y;
not (Y, A);
endmodule
`endcelldefine
