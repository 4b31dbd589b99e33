// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Global clock buffer.
module KX_BUFG(
    input  I,
    output O
);
endmodule
