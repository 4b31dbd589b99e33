// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`include "defs.vh"
module top(input [`WIDTH-1:0] a, output [`WIDTH-1:0] y);
    sub u_sub(.a(a),
              // synthesis translate_off
              .none(a),
              // synthesis translate_on
              .y(y));
endmodule
