// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Rules and counters of one lane on the register bus.
module pf_regs
    import pf_pkg::*;
#(
    parameter int RULES = 4
) (
    input  logic   clk,
    input  logic   rst_n,
    reg_if.device  bus,
    output rule_t  rules [RULES],
    input  count_t passed_count,
    input  count_t dropped_count
);

    localparam int RULE_BITS    = $clog2(RULES);
    localparam int COUNTER_BASE = 4 * RULES;

    logic [RULE_BITS-1:0] rule_select;
    rule_word_e           word_select;
    logic                 in_rules;

    assign in_rules    = bus.addr < COUNTER_BASE;
    assign rule_select = bus.addr[2+:RULE_BITS];
    assign word_select = rule_word_e'(bus.addr[1:0]);

    for (genvar r = 0; r < RULES; r++) begin : entry
        logic selected;

        assign selected = bus.write && in_rules && rule_select == r;

        always_ff @(posedge clk or negedge rst_n)
            if (!rst_n)
                rules[r] <= '0;
            else if (selected)
                unique case (word_select)
                    RULE_CONTROL: begin
                        rules[r].enable  <= bus.wdata[31];
                        rules[r].verdict <= verdict_e'(bus.wdata[1:0]);
                    end
                    RULE_KIND: {rules[r].kind_mask, rules[r].kind} <= bus.wdata;
                    RULE_PORT: {rules[r].port_high, rules[r].port_low} <= bus.wdata;
                    default: ;
                endcase
    end

    always_ff @(posedge clk or negedge rst_n)
        if (!rst_n)
            bus.rdata <= '0;
        else if (in_rules)
            unique case (word_select)
                RULE_CONTROL: bus.rdata <= {rules[rule_select].enable, 29'd0,
                                            rules[rule_select].verdict};
                RULE_KIND:    bus.rdata <= {rules[rule_select].kind_mask, rules[rule_select].kind};
                RULE_PORT:    bus.rdata <= {rules[rule_select].port_high,
                                            rules[rule_select].port_low};
                default:      bus.rdata <= '0;
            endcase
        else
            bus.rdata <= {dropped_count, passed_count};

endmodule
