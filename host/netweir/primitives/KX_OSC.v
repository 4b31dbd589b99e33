// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// On-chip oscillator.
module KX_OSC #(
    parameter DIVIDE = 1
) (
    input  EN,
    output OSC
);
endmodule
