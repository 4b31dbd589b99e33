// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module fifo #(parameter int DEPTH = 4) (input logic clk, input logic push, input logic pop,
                                        output logic full);
    logic [$clog2(DEPTH):0] count;
    always_ff @(posedge clk) count <= count + push - pop;
    assign full = count == DEPTH;
endmodule
