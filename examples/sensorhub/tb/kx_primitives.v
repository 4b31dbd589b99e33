// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Simulation models of the device primitives that the design uses. A synthesis project does not
// contain them: the tool knows the primitives of its device.
`timescale 1ns / 1ps

module KX_IBUF (
    input  wire I,
    output wire O
);
    assign O = I;
endmodule

module KX_BUFG (
    input  wire I,
    output wire O
);
    assign O = I;
endmodule

// Measures the period of CLKIN and runs the outputs at CLKFBOUT_MULT / CLKOUTn_DIVIDE of its rate.
module KX_PLL #(
    parameter CLKFBOUT_MULT  = 10,
    parameter CLKOUT0_DIVIDE = 10,
    parameter CLKOUT1_DIVIDE = 10
) (
    input  wire CLKIN,
    input  wire RST,
    output reg  CLKOUT0,
    output reg  CLKOUT1,
    output reg  LOCKED
);

    realtime last_edge;
    realtime period;
    integer  edges;

    initial begin
        CLKOUT0   = 1'b0;
        CLKOUT1   = 1'b0;
        LOCKED    = 1'b0;
        last_edge = 0;
        period    = 0;
        edges     = 0;
    end

    always @(posedge CLKIN or posedge RST)
        if (RST) begin
            edges  = 0;
            LOCKED = 1'b0;
        end else begin
            period    = $realtime - last_edge;
            last_edge = $realtime;
            edges     = edges + 1;
            LOCKED    = edges > 8;
        end

    always begin
        wait (LOCKED);
        #(period * CLKOUT0_DIVIDE / CLKFBOUT_MULT / 2.0) CLKOUT0 = !CLKOUT0;
    end

    always begin
        wait (LOCKED);
        #(period * CLKOUT1_DIVIDE / CLKFBOUT_MULT / 2.0) CLKOUT1 = !CLKOUT1;
    end

endmodule
