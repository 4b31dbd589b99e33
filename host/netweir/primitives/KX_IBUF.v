// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Input buffer of a pad.
module KX_IBUF(
    input  I,
    output O
);
endmodule
