// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input types_pkg::word_t a, output logic [types_pkg::WIDTH-1:0] y);
    import types_pkg::op_t;
    op_t op;
    assign op = types_pkg::NEGATE;
    alu u_alu(.op, .a, .y);
endmodule
