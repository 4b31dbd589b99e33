// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// An older file, in which nets need no declaration.
module lax(a, b, y);
    input a, b;
    output y;
    wire n;
    assign both = a & b;
    strict u_strict(.a(both), .y(n));
    strict u_other(.a(n), .y(unnamed));
    assign y = n;
endmodule
