// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Bits driven from the turns of a loop.
module top(input a);
    wire [5:0] odd;
    wire [3:0] halves;
    genvar n;
    generate
        for (n = 0; n < 3; n = n + 1) begin : turn
            assign odd[2*n+1] = a;
            if (n == 1) begin : only
                pair u(.o(halves[n+:2]));
            end
        end
    endgenerate
endmodule

module pair(output [1:0] o);
    assign o = 2'b10;
endmodule
