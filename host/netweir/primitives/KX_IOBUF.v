// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Bidirectional buffer of a pad with tri-state control, active high.
module KX_IOBUF(
    input  I,
    input  T,
    output O,
    inout  IO
);
endmodule
