// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// One of everything: an index is no bit wide.
module picker #(
    parameter int N = 4,
    parameter int W = $clog2(N)
) (
    input  logic [N-1:0]   v,
    output logic [N*W-1:0] sel,
    output logic           any
);
    integer s, c;
    assign any = |v;
    always @* begin
        sel = '0;
        c = 0;
        if (N > 1) begin
            for (s = 0; s < N; s = s + 1) begin
                if (v[s]) begin
                    sel[c*W +: W] = s;
                    c = c + 1;
                end
            end
        end
    end
endmodule

module top(input logic v, output logic [1:0] sel, output logic any);
    picker #(.N(1)) u_picker(.v(v), .sel(sel), .any(any));
endmodule
