// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// A constant driver in the module does not reach the scopes.
module top(input a);
    wire [1:0] w;
    assign w = 2'b01;
    genvar i;
    generate
        for (i = 0; i < 2; i = i + 1) begin : g
            wire [1:0] w;
            if (i == 1) begin : inner
                assign w = 2'b10;
            end
        end
    endgenerate
endmodule
