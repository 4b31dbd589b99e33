// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

package types_pkg;
    localparam int WIDTH = 4;
    typedef logic [WIDTH-1:0] word_t;
    typedef enum logic [1:0] {PASS, NEGATE} op_t;
endpackage
