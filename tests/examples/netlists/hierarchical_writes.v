// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// A module writes into its children.
module top(input a);
    child u(.i(a));
    child v(.i(a));
    assign u.w = a;
    assign u.b[1] = a;
    always @* v.g[1].r = a;
endmodule

module child(input i);
    wire       w;
    wire [2:0] b;
    genvar n;
    generate
        for (n = 0; n < 2; n = n + 1) begin : g
            reg r;
        end
    endgenerate
    always @* g[0].r = i;
endmodule
