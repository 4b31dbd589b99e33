// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`include "pf_macros.svh"

// Merges the lanes frame by frame, in turn. The lane number is in the bits above the word.
module pf_arbiter
    import pf_pkg::*;
#(
    parameter int LANES = 4
) (
    input logic    clk,
    input logic    rst_n,
    axis_if.sink   in [LANES],
    axis_if.source out
);

    typedef logic [$clog2(LANES)-1:0] lane_t;

    // An interface array needs constant indices, so it is copied to vectors for the selection.
    word_t            lane_data [LANES];
    logic [LANES-1:0] lane_last;
    logic [LANES-1:0] lane_mark;
    logic [LANES-1:0] lane_valid;

    logic  busy;
    lane_t current;
    lane_t next;
    logic  any;

    for (genvar n = 0; n < LANES; n++) begin : tap
        assign lane_data[n]  = in[n].data;
        assign lane_last[n]  = in[n].last;
        assign lane_mark[n]  = in[n].mark;
        assign lane_valid[n] = in[n].valid;
        assign in[n].ready   = busy && current == lane_t'(n) && out.ready;
    end

    // The first waiting lane after the one served last.
    always_comb begin
        next = current;
        any  = 1'b0;
        for (int distance = LANES; distance >= 1; distance--)
            if (lane_valid[lane_t'(int'(current) + distance)]) begin
                next = lane_t'(int'(current) + distance);
                any  = 1'b1;
            end
    end

    assign out.data  = {current, lane_data[current]};
    assign out.last  = lane_last[current];
    assign out.mark  = lane_mark[current];
    assign out.valid = busy && lane_valid[current];

    always_ff @(posedge clk or negedge rst_n)
        if (!rst_n) begin
            busy    <= 1'b0;
            current <= '0;
        end else if (!busy) begin
            busy    <= any;
            current <= next;
        end else if (out.valid && out.ready && out.last)
            busy <= 1'b0;

endmodule
