// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// A wire between two assignments is kept.
module top(input a, input b, output y, output open_out, inout pad);
    wire mid;
    wire unused;
    assign mid = a & b;
    assign y   = ~mid;
endmodule
