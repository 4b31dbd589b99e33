// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Model of the VHDL entity dead_time for simulators that read Verilog only: counts the clocks since
// the last reason to wait.
module dead_time #(
    parameter int CLOCKS = 1
) (
    input  logic Clk,
    input  logic Reset_n,
    input  logic Enable,
    input  logic Demand,
    output logic GateHigh,
    output logic GateLow
);

    localparam int WAIT = CLOCKS < 1 ? 1 : CLOCKS;

    int   waited;
    logic demanded;

    always @(posedge Clk or negedge Reset_n)
        if (!Reset_n) begin
            waited   <= 0;
            demanded <= 1'b0;
            GateHigh <= 1'b0;
            GateLow  <= 1'b0;
        end else begin
            demanded <= Demand;
            if (!Enable || Demand != demanded)
                waited <= 0;
            else if (waited < WAIT)
                waited <= waited + 1;
            GateHigh <= Enable && Demand && demanded && waited + 1 >= WAIT;
            GateLow  <= Enable && !Demand && !demanded && waited + 1 >= WAIT;
        end

endmodule
