// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Above 4096 bits an array is a memory even with constant indexes.
module top(input a);
    wire [63:0] fits [0:1];
    wire [63:0] memory [0:64];
    assign memory[3][2] = a;
endmodule
