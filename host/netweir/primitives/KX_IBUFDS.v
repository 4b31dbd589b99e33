// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Differential input buffer of a pad pair.
module KX_IBUFDS(
    input  I,
    input  IB,
    output O
);
endmodule
