// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Comments that tools read, of which none changes what the hardware is.
/* verilator lint_off WIDTH */
module top(input clk, input [1:0] state, output reg [1:0] next) /* synthesis syn_hier = "hard" */;
    wire kept /* synthesis syn_keep = 1 */ ;
    reg [1:0] again; // synthesis syn_preserve = 1
    // verilator public_module
    /* verilator tracing_off */
    always @(state) begin
        case (state) // synthesis full_case parallel_case
            2'b01: next = 2'b10;
            2'b10: next = 2'b01;
        endcase
    end
    // verilator coverage_off
    always @(posedge clk) again <= next; // pragma attribute again preserve 1
    // translate_off is only spoken of here
    wire spoken_of;
    //
endmodule // ends with a backslash \
