// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// A lane that lets every frame through, for bring-up of the links around the filter. Enable it in
// the project in place of rtl/pf_lane.sv.
module pf_lane
    import pf_pkg::*;
#(
    parameter int RULES       = 4,
    parameter int FRAME_WORDS = 64,
    parameter bit INPUT_SKID  = 1'b1
) (
    input logic    clk,
    input logic    rst_n,
    input logic    block,
    reg_if.device  bus,
    axis_if.sink   in,
    axis_if.source out
);

    assign out.data  = in.data;
    assign out.last  = in.last;
    assign out.mark  = in.mark;
    assign out.valid = in.valid && !block;
    assign in.ready  = out.ready && !block;
    assign bus.rdata = '0;

endmodule
