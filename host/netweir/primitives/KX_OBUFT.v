// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Output buffer of a pad with tri-state control, active high.
module KX_OBUFT(
    input  I,
    input  T,
    output O
);
endmodule
