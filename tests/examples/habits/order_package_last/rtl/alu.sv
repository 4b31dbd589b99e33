// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module alu import types_pkg::*; (input op_t op, input word_t a, output word_t y);
    always_comb y = (op == NEGATE) ? -a : a;
endmodule
