// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Simulation code between pragmas, as each tool spells them.
module top(input clk, input d, output reg q);
    // synthesis translate_off
    reg sim_line;
    initial sim_line = 1'b0;
    // synthesis translate_on
    wire first = d;
    //synopsys translate_off
    integer sim_count;
    //synopsys translate_on
    /* pragma translate_off */ reg sim_block; /* pragma translate_on */ wire second = first;
    // SYNTHESIS   TRANSLATE_OFF
    real sim_real;
    always @(posedge clk) $display("%t // synthesis translate_on", $realtime);
    // Synthesis Translate_On
    //	ostra	translate_off
    initial begin
        q = 1'b0; // A comment that says translate_on within a sentence is none.
    end
    //	ostra	translate_on
    /*
       synthesis translate_off
     */
    reg sim_lines;
    /*
       synthesis translate_on
     */
    wire [8*30-1:0] text = "// synthesis translate_off";
    always @(posedge clk) q <= second;
endmodule
