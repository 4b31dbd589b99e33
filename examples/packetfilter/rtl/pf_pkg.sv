// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Types that the whole packet filter shares.
package pf_pkg;

    localparam int DATA_WIDTH  = 32;
    localparam int COUNT_WIDTH = 16;

    typedef logic [DATA_WIDTH-1:0]  word_t;
    typedef logic [COUNT_WIDTH-1:0] count_t;

    // The verdict on a frame. The lower value wins when several rules match.
    typedef enum logic [1:0] {
        VERDICT_DROP = 2'd0,
        VERDICT_PASS = 2'd1,
        VERDICT_MARK = 2'd2
    } verdict_e;

    // The first two words of a frame.
    typedef struct packed {
        logic [15:0] kind;
        logic [15:0] port;
        word_t       source;
    } header_t;

    // One filter rule: kind under a mask, port within a range.
    typedef struct packed {
        logic        enable;
        verdict_e    verdict;
        logic [15:0] kind;
        logic [15:0] kind_mask;
        logic [15:0] port_low;
        logic [15:0] port_high;
    } rule_t;

    // Registers of one lane: rules from address 0, four words each, then the counters.
    typedef enum logic [1:0] {
        RULE_CONTROL = 2'd0,
        RULE_KIND    = 2'd1,
        RULE_PORT    = 2'd2,
        RULE_UNUSED  = 2'd3
    } rule_word_e;

endpackage
