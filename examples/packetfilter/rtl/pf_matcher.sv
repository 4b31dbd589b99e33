// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`include "pf_macros.svh"

// Compares a header with all rules in parallel and reduces the verdicts in a tree, one register stage
// per level. A frame that no rule matches is dropped, and so is a runt.
module pf_matcher
    import pf_pkg::*;
    import pf_match_pkg::*;
#(
    parameter int RULES = 4
) (
    input  logic     clk,
    input  logic     rst_n,
    input  rule_t    rules [RULES],
    input  header_t  header,
    input  logic     header_valid,
    input  logic     runt,
    output verdict_e verdict,
    output logic     verdict_valid
);

    localparam int LEVELS = $clog2(RULES);

    // Level 0 holds the hits of the rules; level n has RULES / 2**n entries.
    verdict_e          found [LEVELS+1][RULES];
    logic [RULES-1:0]  hit [LEVELS+1];
    logic [LEVELS:0]   stage_valid;

    for (genvar r = 0; r < RULES; r++) begin : compare
        `PF_FF(hit[0][r], rule_matches(rules[r], header) && !runt, 1'b0)
        `PF_FF(found[0][r], rules[r].verdict, VERDICT_DROP)
    end

    `PF_FF(stage_valid, {stage_valid[LEVELS-1:0], header_valid}, '0)

    for (genvar level = 1; level <= LEVELS; level++) begin : reduce
        for (genvar n = 0; n < RULES; n++) begin : node
            if (n < (RULES >> level)) begin
                logic     left_hit, right_hit;
                verdict_e left, right, best;

                assign left_hit  = hit[level-1][2*n];
                assign right_hit = hit[level-1][2*n+1];
                assign left      = found[level-1][2*n];
                assign right     = found[level-1][2*n+1];
                assign best      = left_hit && right_hit ? stricter(left, right)
                                   : left_hit            ? left : right;

                `PF_FF(hit[level][n], left_hit || right_hit, 1'b0)
                `PF_FF(found[level][n], best, VERDICT_DROP)
            end else begin
                assign hit[level][n]   = 1'b0;
                assign found[level][n] = VERDICT_DROP;
            end
        end
    end

    assign verdict       = hit[LEVELS][0] ? found[LEVELS][0] : VERDICT_DROP;
    assign verdict_valid = stage_valid[LEVELS];

endmodule
