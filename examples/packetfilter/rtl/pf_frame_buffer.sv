// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`include "pf_macros.svh"

// Stores frames until their verdict is known: a passed frame becomes readable as a whole, a dropped
// one is discarded. A frame longer than the buffer is consumed and dropped.
module pf_frame_buffer
    import pf_pkg::*;
#(
    parameter int WORDS = 64
) (
    input  logic     clk,
    input  logic     rst_n,
    axis_if.sink     in,
    input  verdict_e verdict,
    input  logic     verdict_valid,
    axis_if.source   out,
    output logic     passed,
    output logic     dropped
);

    localparam int AW = $clog2(WORDS);

    typedef enum logic {TAKE, DECIDE} state_e;
    typedef logic [AW:0] pointer_t;

    state_e                state;
    logic [DATA_WIDTH:0]   store [WORDS];
    logic                  marks [WORDS];
    pointer_t              write_ptr;
    pointer_t              frame_ptr;
    pointer_t              read_ptr;
    pointer_t              level;
    logic                  full;
    logic                  stuck;
    logic                  overflow;
    logic                  decided;
    verdict_e              decision;
    logic                  beat;
    logic                  commit;

    assign level    = write_ptr - read_ptr;
    assign full     = level[AW];
    assign stuck    = full && frame_ptr == read_ptr;
    assign in.ready = state == TAKE && (!full || stuck);
    assign beat     = in.valid && in.ready;
    assign commit   = decision != VERDICT_DROP && !overflow;

    assign out.valid             = read_ptr != frame_ptr;
    assign {out.last, out.data}  = store[read_ptr[AW-1:0]];
    assign out.mark              = marks[read_ptr[AW-1:0]];

    always_ff @(posedge clk)
        if (beat && !full)
            store[write_ptr[AW-1:0]] <= {in.last, in.data};

    // The mark of a frame is known after its words and goes with the first of them.
    always_ff @(posedge clk)
        if (state == DECIDE && decided)
            marks[frame_ptr[AW-1:0]] <= decision == VERDICT_MARK;
        else if (beat && !full)
            marks[write_ptr[AW-1:0]] <= 1'b0;

    always_ff @(posedge clk or negedge rst_n)
        if (!rst_n) begin
            decision <= VERDICT_DROP;
            decided  <= 1'b0;
        end else if (verdict_valid) begin
            decision <= verdict;
            decided  <= 1'b1;
        end else if (state == DECIDE && decided)
            decided <= 1'b0;

    always_ff @(posedge clk or negedge rst_n)
        if (!rst_n) begin
            state     <= TAKE;
            write_ptr <= '0;
            frame_ptr <= '0;
            overflow  <= 1'b0;
            passed    <= 1'b0;
            dropped   <= 1'b0;
        end else begin
            passed  <= 1'b0;
            dropped <= 1'b0;
            if (beat) begin
                if (full)
                    overflow <= 1'b1;
                else
                    write_ptr <= write_ptr + 1'b1;
                if (in.last)
                    state <= DECIDE;
            end else if (state == DECIDE && decided) begin
                state    <= TAKE;
                overflow <= 1'b0;
                passed   <= commit;
                dropped  <= !commit;
                if (commit)
                    frame_ptr <= write_ptr;
                else
                    write_ptr <= frame_ptr;
            end
        end

    `PF_FF(read_ptr, (out.valid && out.ready) ? read_ptr + 1'b1 : read_ptr, '0)

endmodule
