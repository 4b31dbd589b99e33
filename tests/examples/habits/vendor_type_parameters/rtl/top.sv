// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input logic clk, input logic [3:0] d, output logic [3:0] q);
    typedef logic [3:0] word_t;
    word_t mid;
    SYNC_CELL #(.T(word_t), .STAGES(2)) u_sync(.clk, .d(d), .q(mid));
    PIPE_CELL #(logic [3:0]) u_pipe[2](.clk(clk), .d({mid, mid}), .q());
    OUT_CELL u_out(.d(mid), .q);
endmodule
