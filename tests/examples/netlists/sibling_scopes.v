// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// The same name in the module and in three scopes; only one of them is driven, by a constant.
module top(input a);
    wire w;
    generate
        if (1) begin : first
            wire w;
        end
        if (1) begin : second
            wire w;
            assign w = 1'b1;
        end
        if (1) begin : third
            wire w;
            wire v = w;
        end
    endgenerate
endmodule
