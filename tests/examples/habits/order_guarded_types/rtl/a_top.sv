// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`include "types.svh"
module a_top import b_pkg::*; (input word_t a, input pair_t b, output word_t y);
    assign y = a & b.low;
endmodule
