// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Self-checking test of the packet filter. Sends frames into all lanes at once, compares what comes
// out with a model of the rules, and plays the debug core on the nets left open in the design.
// Ends with PASS or FAIL. Simulate with a time unit of 1 ns.

module pf_tb;

    import pf_pkg::*;

    localparam int LANES = 4;
    localparam int RULES = 4;

    typedef struct packed {
        logic        mark;
        logic        last;
        logic [31:0] data;
    } word_out_t;

    logic                   clk = 1'b0;
    logic                   rst_n = 1'b0;
    logic [LANES-1:0][31:0] s_data = '0;
    logic [LANES-1:0]       s_last = '0;
    logic [LANES-1:0]       s_valid = '0;
    logic [LANES-1:0]       s_ready;
    logic [31:0]            m_data;
    logic                   m_last;
    logic                   m_mark;
    logic [1:0]             m_lane;
    logic                   m_valid;
    logic                   m_ready = 1'b0;
    logic [1:0]             cfg_lane = '0;
    logic [5:0]             cfg_addr = '0;
    logic [31:0]            cfg_wdata = '0;
    logic                   cfg_write = 1'b0;
    logic [31:0]            cfg_rdata;

    int errors = 0;
    int checks = 0;

    pf_top #(.LANES(LANES), .RULES(RULES)) dut (.*);

    // These take the place of the debug core. With the macro EXPORTED_CORES it is the module that
    // "tarn export simulation" writes, with the initial values of the configuration.
    logic [LANES-1:0] probe_block = '0;
    logic             probe_force = 1'b0;
    logic [1:0]       probe_verdict = VERDICT_DROP;

`ifndef EXPORTED_CORES
    assign dut.dbg_block = probe_block;
`endif
    for (genvar n = 0; n < LANES; n++) begin : probe
`ifdef EXPORTED_CORES
        if (n != 2)
`endif
        begin
            assign dut.lane[n].u_lane.dbg_force_verdict = probe_force && n == 2;
            assign dut.lane[n].u_lane.dbg_verdict       = probe_verdict;
        end
    end

    always #5 clk = !clk;

    // ----- Model -----

    logic        rule_on [LANES][RULES];
    int          rule_verdict [LANES][RULES];
    logic [15:0] rule_kind [LANES][RULES];
    logic [15:0] rule_mask [LANES][RULES];
    logic [15:0] rule_low [LANES][RULES];
    logic [15:0] rule_high [LANES][RULES];

    // The expected words of each lane: from taken to added in its row.
    word_out_t expected [LANES][8192];
    int        added [LANES];
    int        taken [LANES];
    int        passed [LANES];
    int        dropped [LANES];

    function automatic int verdict_of(input int lane, input logic [15:0] kind,
                                      input logic [15:0] port, input int length);
        int best;
        best = 3;
        if (length < 2 || length > 64)
            return 0;
        if (probe_force && lane == 2)
            return int'(probe_verdict);
        for (int r = 0; r < RULES; r++)
            if (rule_on[lane][r] && (kind & rule_mask[lane][r]) == (rule_kind[lane][r] & rule_mask[lane][r])
                && port >= rule_low[lane][r] && port <= rule_high[lane][r]
                && rule_verdict[lane][r] < best)
                best = rule_verdict[lane][r];
        return best == 3 ? 0 : best;
    endfunction

    task automatic check(input logic good, input string what);
        checks++;
        if (good !== 1'b1) begin
            errors++;
            if (errors <= 20)
                $display("%0t wrong: %s", $time, what);
        end
    endtask

    // ----- Stimulus -----

    // What the streams offer after each falling edge.
    logic [LANES-1:0][31:0] next_data = '0;
    logic [LANES-1:0]       next_last = '0;
    logic [LANES-1:0]       next_valid = '0;

    always begin
        @(negedge clk);
        #1;
        s_data  = next_data;
        s_last  = next_last;
        s_valid = next_valid;
    end

    // What the debug core drives.
    task automatic set_core(input logic [LANES-1:0] block, input logic forced,
                            input logic [1:0] verdict);
        probe_block   = block;
        probe_force   = forced;
        probe_verdict = verdict;
`ifdef EXPORTED_CORES
        tarn_probes.core0.set(0, block);
        tarn_probes.core0.set(1, {1'b0, forced, verdict});
`endif
    endtask

    task automatic write_reg(input int lane, input int addr, input logic [31:0] data);
        @(negedge clk);
        cfg_lane  = lane[1:0];
        cfg_addr  = addr[5:0];
        cfg_wdata = data;
        cfg_write = 1'b1;
        @(negedge clk);
        cfg_write = 1'b0;
    endtask

    task automatic expect_reg(input int lane, input int addr, input logic [31:0] data,
                              input string what);
        @(negedge clk);
        cfg_lane = lane[1:0];
        cfg_addr = addr[5:0];
        @(negedge clk);
        check(cfg_rdata === data, $sformatf("%s of lane %0d: %h, not %h", what, lane, cfg_rdata, data));
    endtask

    task automatic set_rule(input int lane, input int rule, input verdict_e verdict,
                            input logic [15:0] kind, input logic [15:0] mask,
                            input logic [15:0] low, input logic [15:0] high);
        rule_on[lane][rule]      = 1'b1;
        rule_verdict[lane][rule] = int'(verdict);
        rule_kind[lane][rule]    = kind;
        rule_mask[lane][rule]    = mask;
        rule_low[lane][rule]     = low;
        rule_high[lane][rule]    = high;
        write_reg(lane, 4 * rule + 1, {mask, kind});
        write_reg(lane, 4 * rule + 2, {high, low});
        write_reg(lane, 4 * rule, {1'b1, 29'd0, verdict});
    endtask

    task automatic send_frame(input int lane, input logic [15:0] kind, input logic [15:0] port,
                              input int length);
        int          verdict;
        logic        accepted;
        logic [31:0] word;
        verdict = verdict_of(lane, kind, port, length);
        if (verdict == 0)
            dropped[lane]++;
        else
            passed[lane]++;
        for (int n = 0; n < length; n++) begin
            word = n == 0 ? {kind, port} : $urandom;
            if (verdict != 0) begin
                expected[lane][added[lane]] =
                    '{mark: verdict == 2 && n == 0, last: n == length - 1, data: word};
                added[lane]++;
            end
            next_data[lane]  = word;
            next_last[lane]  = n == length - 1;
            next_valid[lane] = 1'b1;
            // Not at the edge itself, where simulators differ.
            do begin
                #4 accepted = s_ready[lane];
                @(negedge clk);
            end while (!accepted);
            next_valid[lane] = 1'b0;
            if ($urandom_range(3) == 0)
                @(negedge clk);
        end
    endtask

    task automatic traffic(input int lane, input int frames);
        @(negedge clk);
        repeat (frames)
            send_frame(lane, 16'($urandom_range(3)), 16'($urandom_range(40)),
                       $urandom_range(1, 24));
    endtask

    task automatic burst(input int lane, input int frames, input int length);
        @(negedge clk);
        repeat (frames)
            send_frame(lane, 16'h0001, 16'd1, length);
    endtask

    function automatic int busy_lanes();
        busy_lanes = 0;
        for (int n = 0; n < LANES; n++)
            if (added[n] != taken[n])
                busy_lanes++;
    endfunction

    task automatic drain(input string what);
        int patience;
        patience = 0;
        while (busy_lanes() != 0 && patience < 4000) begin
            @(negedge clk);
            patience++;
        end
        repeat (40) @(negedge clk);
        for (int n = 0; n < LANES; n++)
            check(added[n] == taken[n],
                  $sformatf("%s: %0d words missing from lane %0d", what, added[n] - taken[n], n));
    endtask

    // ----- Output -----

    logic       in_frame = 1'b0;
    logic [1:0] frame_lane = '0;
    bit         stall = 1'b0;

    always @(negedge clk) m_ready <= !stall && $urandom_range(3) != 0;

    always @(posedge clk)
        if (rst_n && m_valid && m_ready) begin
            word_out_t got;
            word_out_t want;
            got = '{mark: m_mark, last: m_last, data: m_data};
            if (in_frame)
                check(m_lane == frame_lane, "a frame is not interrupted by another lane");
            in_frame   <= !m_last;
            frame_lane <= m_lane;
            if (added[m_lane] == taken[m_lane])
                check(1'b0, $sformatf("unexpected word %h from lane %0d", m_data, m_lane));
            else begin
                want = expected[m_lane][taken[m_lane]];
                taken[m_lane]++;
                check(got === want, $sformatf("lane %0d: word %h, not %h", m_lane, got, want));
            end
        end

    // ----- The test -----

    initial begin
        for (int l = 0; l < LANES; l++) begin
            added[l]   = 0;
            taken[l]   = 0;
            passed[l]  = 0;
            dropped[l] = 0;
            for (int r = 0; r < RULES; r++)
                rule_on[l][r] = 1'b0;
        end
        repeat (4) @(negedge clk);
        rst_n = 1'b1;
        repeat (2) @(negedge clk);

        // Without rules nothing passes.
        for (int l = 0; l < LANES; l++)
            send_frame(l, 16'h0001, 16'd7, 4);
        drain("no rules");

        for (int l = 0; l < LANES; l++) begin
            set_rule(l, 0, VERDICT_PASS, 16'h0001, 16'h0001, 16'd0, 16'd30);
            set_rule(l, 1, VERDICT_DROP, 16'h0003, 16'hFFFF, 16'd10, 16'd20);
            set_rule(l, 2, VERDICT_MARK, 16'h0002, 16'hFFFF, 16'd5, 16'd40);
        end
        set_rule(1, 3, VERDICT_PASS, 16'h0002, 16'h0002, 16'd0, 16'd15);
        expect_reg(1, 13, 32'h0002_0002, "rule kind");
        expect_reg(1, 14, 32'h000F_0000, "rule ports");
        expect_reg(1, 12, 32'h8000_0001, "rule control");
        expect_reg(0, 12, 32'h0000_0000, "rule control");

        // Each edge of a rule in turn
        send_frame(0, 16'h0001, 16'd30, 2);
        send_frame(0, 16'h0001, 16'd31, 2);
        send_frame(0, 16'h0003, 16'd9, 3);
        send_frame(0, 16'h0003, 16'd10, 3);
        send_frame(0, 16'h0003, 16'd20, 3);
        send_frame(0, 16'h0002, 16'd5, 5);
        send_frame(0, 16'h0002, 16'd4, 5);
        send_frame(0, 16'h0001, 16'd0, 1);
        drain("edges of the rules");
        check(passed[0] == 3 && dropped[0] == 6, "the model counts the frames of lane 0");

        fork
            traffic(0, 60);
            traffic(1, 60);
            traffic(2, 60);
            traffic(3, 60);
        join
        drain("traffic in all lanes");
        for (int l = 0; l < LANES; l++)
            expect_reg(l, 16, {16'(dropped[l]), 16'(passed[l])}, "counters");

        // A frame as long as the buffer passes, a longer one is dropped.
        send_frame(3, 16'h0001, 16'd1, 64);
        drain("the longest frame");
        send_frame(3, 16'h0001, 16'd1, 65);
        send_frame(3, 16'h0001, 16'd1, 3);
        drain("a frame longer than the buffer");

        // A stalled output blocks the senders and loses nothing.
        stall = 1'b1;
        fork
            burst(0, 40, 8);
            begin
                repeat (600) @(negedge clk);
                check(!s_ready[0], "a full lane holds its sender back");
                stall = 1'b0;
            end
        join
        drain("standing output");

        // The debug core blocks a lane, then forces the verdict of one.
        set_core(4'b0010, 1'b0, VERDICT_DROP);
        fork
            burst(1, 2, 6);
            begin
                repeat (100) @(negedge clk);
                check(added[1] != taken[1], "a blocked lane passes nothing");
                set_core(4'b0000, 1'b0, VERDICT_DROP);
            end
        join
        drain("blocked lane");
        set_core(4'b0000, 1'b1, VERDICT_MARK);
        send_frame(2, 16'h0000, 16'd99, 4);
        drain("forced mark");
        set_core(4'b0000, 1'b1, VERDICT_DROP);
        send_frame(2, 16'h0001, 16'd1, 4);
        send_frame(3, 16'h0001, 16'd1, 4);
        drain("forced drop");
        set_core(4'b0000, 1'b0, VERDICT_DROP);
        send_frame(2, 16'h0001, 16'd1, 4);
        drain("released verdict");

        for (int l = 0; l < LANES; l++)
            expect_reg(l, 16, {16'(dropped[l]), 16'(passed[l])}, "counters at the end");
        finish();
    end

    initial begin
        #2000000;
        errors++;
        $display("wrong: the test did not come to its end");
        finish();
    end

    task automatic finish();
        if (errors == 0)
            $display("PASS: %0d checks", checks);
        else
            $display("FAIL: %0d of %0d checks", errors, checks);
        $finish;
    endtask

endmodule
