// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`include "types.svh"
module sub(input logic clk, input request_t in, output request_t out);
    always_ff @(posedge clk) out <= in;
endmodule
