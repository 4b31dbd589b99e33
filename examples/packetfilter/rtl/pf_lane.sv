// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`include "pf_macros.svh"

// One lane: frames come in, the rules decide, passed frames wait at the output.
module pf_lane
    import pf_pkg::*;
#(
    parameter int RULES       = 4,
    parameter int FRAME_WORDS = `FRAME_WORDS,
    parameter bit INPUT_SKID  = 1'b1
) (
    input logic    clk,
    input logic    rst_n,
    input logic    block,
    reg_if.device  bus,
    axis_if.sink   in,
    axis_if.source out
);

    // Left open on purpose: a virtual I/O core drives these nets to force the verdict of a lane.
    wire       dbg_force_verdict;
    wire [1:0] dbg_verdict;

    axis_if #(.WIDTH(DATA_WIDTH)) taken ();
    axis_if #(.WIDTH(DATA_WIDTH)) gated ();

    rule_t    rules [RULES];
    header_t  header;
    logic     header_valid;
    logic     runt;
    verdict_e matched;
    verdict_e verdict;
    logic     verdict_valid;
    logic     passed;
    logic     dropped;

    // Events counted: 0 passed, 1 dropped.
    count_t   events [2];

    if (INPUT_SKID) begin : input_stage
        axis_skid #(.WIDTH(DATA_WIDTH)) u_skid (.clk, .rst_n, .in(in), .out(taken));
    end else begin : input_stage
        assign taken.data  = in.data;
        assign taken.last  = in.last;
        assign taken.mark  = in.mark;
        assign taken.valid = in.valid;
        assign in.ready    = taken.ready;
    end

    // A blocked lane takes no words.
    assign gated.data  = taken.data;
    assign gated.last  = taken.last;
    assign gated.mark  = taken.mark;
    assign gated.valid = taken.valid && !block;
    assign taken.ready = gated.ready && !block;

    pf_parser u_parser (
        .clk,
        .rst_n,
        .stream (gated),
        .header,
        .header_valid,
        .runt
    );

    pf_matcher #(.RULES(RULES)) u_matcher (
        .clk,
        .rst_n,
        .rules,
        .header,
        .header_valid,
        .runt,
        .verdict       (matched),
        .verdict_valid (verdict_valid)
    );

    assign verdict = dbg_force_verdict ? verdict_e'(dbg_verdict) : matched;

    pf_frame_buffer #(.WORDS(FRAME_WORDS)) u_buffer (
        .clk,
        .rst_n,
        .in (gated),
        .verdict,
        .verdict_valid,
        .out (out),
        .passed,
        .dropped
    );

    // Saturating counters.
    for (genvar e = 0; e < 2; e++) begin
        logic event_now;

        assign event_now = e == 0 ? passed : dropped;
        `PF_FF(events[e], event_now && events[e] != '1 ? events[e] + 1'b1 : events[e], '0)
    end

    pf_regs #(.RULES(RULES)) u_regs (
        .clk,
        .rst_n,
        .bus (bus),
        .rules,
        .passed_count  (events[0]),
        .dropped_count (events[1])
    );

endmodule
