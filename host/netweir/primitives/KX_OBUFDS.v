// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Differential output buffer of a pad pair.
module KX_OBUFDS(
    input  I,
    output O,
    output OB
);
endmodule
