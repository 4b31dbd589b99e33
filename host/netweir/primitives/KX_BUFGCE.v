// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Global clock buffer with enable.
module KX_BUFGCE(
    input  I,
    input  CE,
    output O
);
endmodule
