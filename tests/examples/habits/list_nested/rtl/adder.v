// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module adder(input [1:0] a, input [1:0] b, output [2:0] s);
    assign s = a + b;
endmodule
