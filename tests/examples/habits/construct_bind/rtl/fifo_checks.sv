// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module fifo_checks #(parameter int DEPTH = 0) (input logic clk, input logic push, input logic full,
                                               input logic [$clog2(DEPTH):0] count);
    a_overflow: assert property (@(posedge clk) full |-> !push);
    a_count: assert property (@(posedge clk) count <= DEPTH);
endmodule
bind fifo fifo_checks #(.DEPTH(DEPTH)) u_checks(.*);
