// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Output buffer of a pad.
module KX_OBUF(
    input  I,
    output O
);
endmodule
