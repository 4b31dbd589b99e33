// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`include "pwm_defs.svh"

// Centre-aligned pulse-width modulator for half bridges. Channel n is high for 2 * duty - 1 of the
// 2 * (2**DUTY_BITS - 1) clocks of a period, and always low with a duty of 0. New duties take effect
// with the next period.
module pwm_core #(
    parameter int CHANNELS    = 1,
    parameter int DUTY_BITS   = 8,
    parameter int DEAD_CLOCKS = 1
) (
    input  logic                          clk,
    input  logic                          rst_n,
    input  logic                          enable,
    input  logic [CHANNELS*DUTY_BITS-1:0] duty,
    output logic                          period_start,
    output logic [CHANNELS-1:0]           gate_high,
    output logic [CHANNELS-1:0]           gate_low
);

    typedef logic [DUTY_BITS-1:0] count_t;
    typedef enum logic {UP, DOWN} direction_e;

    localparam count_t TOP = '1;

    // Left open on purpose: a virtual I/O core drives this net in the laboratory to turn all gates
    // off. Without one the synthesis ties it to 0.
    wire dbg_gates_off;

    count_t                        carrier;
    direction_e                    direction;
    logic [CHANNELS*DUTY_BITS-1:0] active_duty;
    logic                          last_clock;
    logic                          gates_on;

    assign last_clock = direction == DOWN && carrier == 1;
    assign gates_on   = enable && !dbg_gates_off;

    always_ff @(posedge clk or negedge rst_n)
        if (!rst_n) begin
            carrier   <= '0;
            direction <= UP;
        end else begin
            carrier <= direction == UP ? carrier + 1'b1 : carrier - 1'b1;
            if (direction == UP && carrier == TOP - 1'b1)
                direction <= DOWN;
            else if (last_clock)
                direction <= UP;
        end

    always_ff @(posedge clk or negedge rst_n)
        if (!rst_n) begin
            active_duty  <= '0;
            period_start <= 1'b0;
        end else begin
            period_start <= last_clock;
            if (last_clock)
                active_duty <= duty;
        end

    for (genvar n = 0; n < CHANNELS; n++) begin : channel
        logic demand;
        logic high_on;
        logic low_on;

        assign demand = carrier < active_duty[n*DUTY_BITS +: DUTY_BITS];

        dead_time #(
            .CLOCKS (DEAD_CLOCKS)
        ) u_dead_time (
            .Clk      (clk),
            .Reset_n  (rst_n),
            .Enable   (gates_on),
            .Demand   (demand),
            .GateHigh (high_on),
            .GateLow  (low_on)
        );

        assign gate_high[n] = `GATE_LEVEL(high_on);
        assign gate_low[n]  = `GATE_LEVEL(low_on);
    end

endmodule
