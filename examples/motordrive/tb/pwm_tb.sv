// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Self-checking test of the pulse-width modulator. Applies the vectors of a file, prints the outputs
// clock by clock, and ends with PASS or FAIL. Each vector holds for a number of clocks:
// clocks, enable, gates off by the debug core, duty of channel 1, duty of channel 0.
`timescale 1ns / 1ps

module pwm_tb #(
    parameter int DEAD_CLOCKS = 3
);

    localparam int CHANNELS  = 2;
    localparam int DUTY_BITS = 4;
    localparam int PERIOD    = 2 * (2 ** DUTY_BITS - 1);
    localparam int WAIT      = DEAD_CLOCKS < 1 ? 1 : DEAD_CLOCKS;

    logic                 clk = 1'b0;
    logic                 rst_n = 1'b0;
    logic                 enable = 1'b0;
    logic                 probe_gates_off = 1'b0;
    logic [DUTY_BITS-1:0] duty0 = '0;
    logic [DUTY_BITS-1:0] duty1 = '0;
    logic                 period_start;
    logic [CHANNELS-1:0]  gate_high;
    logic [CHANNELS-1:0]  gate_low;
    logic [CHANNELS-1:0]  high_on;
    logic [CHANNELS-1:0]  low_on;

    int errors = 0;
    int checks = 0;

    pwm_core #(
        .CHANNELS    (CHANNELS),
        .DUTY_BITS   (DUTY_BITS),
        .DEAD_CLOCKS (DEAD_CLOCKS)
    ) dut (
        .clk          (clk),
        .rst_n        (rst_n),
        .enable       (enable),
        .duty         ({duty1, duty0}),
        .period_start (period_start),
        .gate_high    (gate_high),
        .gate_low     (gate_low)
    );

    // Takes the place of the debug core.
    assign dut.dbg_gates_off = probe_gates_off;

    assign high_on = `GATE_ON ? gate_high : ~gate_high;
    assign low_on  = `GATE_ON ? gate_low : ~gate_low;

    always #5 clk = !clk;

    task automatic check(input bit good, input string what);
        checks++;
        if (!good) begin
            errors++;
            $display("%0t wrong: %s", $time, what);
        end
    endtask

    function automatic int at_least_0(input int value);
        return value < 0 ? 0 : value;
    endfunction

    // Clocks of one period in which a gate is on when nothing changes.
    function automatic int high_clocks(input int duty);
        return duty == 0 ? 0 : at_least_0(2 * duty - 1 - WAIT);
    endfunction

    function automatic int low_clocks(input int duty);
        return duty == 0 ? PERIOD : at_least_0(PERIOD - (2 * duty - 1) - WAIT);
    endfunction

    int highs [CHANNELS];
    int lows [CHANNELS];
    int off_clocks [CHANNELS];
    bit was_high [CHANNELS];
    bit in_period;
    int period_clocks;
    int steady_clocks;

    // The bridges are never shorted.
    task automatic check_gates(input int n);
        check(!(high_on[n] && low_on[n]), "both gates of a channel are on");
        if (high_on[n] || low_on[n]) begin
            check(off_clocks[n] == 0 || was_high[n] == high_on[n] || off_clocks[n] >= WAIT,
                  "dead time");
            check(off_clocks[n] != 0 || was_high[n] == high_on[n], "change without dead time");
            was_high[n]   = high_on[n];
            off_clocks[n] = 0;
        end else
            off_clocks[n]++;
        check(steady_clocks < 2 || (enable && !probe_gates_off) || !(high_on[n] || low_on[n]),
              "a gate is on although it is not enabled");
    endtask

    task automatic check_period(input int n, input int duty);
        if (steady_clocks > 3 * PERIOD && enable && !probe_gates_off) begin
            check(highs[n] == high_clocks(duty),
                  $sformatf("channel %0d: %0d clocks high with duty %0d", n, highs[n], duty));
            check(lows[n] == low_clocks(duty),
                  $sformatf("channel %0d: %0d clocks low with duty %0d", n, lows[n], duty));
        end
        highs[n] = 0;
        lows[n]  = 0;
    endtask

    task automatic one_clock;
        @(negedge clk);
        $display("clock %b %b %b", period_start, high_on, low_on);
        for (int n = 0; n < CHANNELS; n++)
            check_gates(n);
        if (period_start) begin
            check(!in_period || period_clocks == PERIOD, "length of a period");
            in_period     = 1'b1;
            period_clocks = 0;
            check_period(0, int'(duty0));
            check_period(1, int'(duty1));
        end
        for (int n = 0; n < CHANNELS; n++) begin
            highs[n] += int'(high_on[n]);
            lows[n]  += int'(low_on[n]);
        end
        period_clocks++;
        steady_clocks++;
    endtask

    initial begin
        string vectors;
        int    file;
        int    clocks;
        int    vector_enable;
        int    vector_off;
        int    vector_duty1;
        int    vector_duty0;
        if (!$value$plusargs("vectors=%s", vectors))
            vectors = "tb/pwm_vectors.txt";
        for (int n = 0; n < CHANNELS; n++) begin
            highs[n]      = 0;
            lows[n]       = 0;
            off_clocks[n] = WAIT;
            was_high[n]   = 1'b0;
        end
        in_period     = 1'b0;
        period_clocks = 0;
        steady_clocks = 0;
        file          = $fopen(vectors, "r");
        repeat (2) @(negedge clk);
        rst_n = 1'b1;
        while ($fscanf(file, "%d %d %d %d %d", clocks, vector_enable, vector_off, vector_duty1,
                       vector_duty0) == 5) begin
            enable          = vector_enable != 0;
            probe_gates_off = vector_off != 0;
            duty1           = vector_duty1[DUTY_BITS-1:0];
            duty0           = vector_duty0[DUTY_BITS-1:0];
            steady_clocks   = 0;
            repeat (clocks) one_clock;
        end
        if (checks > 1000 && errors == 0)
            $display("PASS: %0d checks", checks);
        else
            $display("FAIL: %0d of %0d checks", errors, checks);
        $finish;
    end

endmodule
