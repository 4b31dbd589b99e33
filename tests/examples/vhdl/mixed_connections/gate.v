// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module gate(input a, b, input [2:0] v, input f, output [1:0] o, input c, input [1:0] n);
endmodule
