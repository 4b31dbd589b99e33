// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// An array of them shares a bus out among its instances.
module top(input a);
    wire [7:0] row;
    MYSTERY u0 [0:1] (.Q(row[5:2]), .D(a));
endmodule
