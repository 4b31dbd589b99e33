// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Nested, unnamed and conditional scopes.
module top(input a);
    genvar i, j;
    generate
        for (i = 0; i < 2; i = i + 1) begin : g
            wire n;
            for (j = 0; j < 2; j = j + 1) begin : h
                wire w;
                leaf u(.i(a), .o(w));
            end
        end
        for (i = 3; i < 4; i = i + 1) begin
            wire unnamed;
        end
        if (0) begin : never
            wire gone;
            leaf u(.i(a), .o(gone));
        end else begin : taken
            wire here;
        end
    endgenerate
endmodule

module leaf(input i, output o);
    assign o = !i;
endmodule
