// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// The preprocessor does not know of hidden text: it does its work there too.
module top(input clk);
    // synthesis translate_off
`define FROM_HIDDEN 3
`ifdef SOMETHING_ELSE
    // synthesis translate_on
`endif
    reg hidden;
    // synthesis translate_on
    wire [`FROM_HIDDEN-1:0] seen;
`ifdef SYNTHESIS
    // synthesis translate_off
`endif
    reg hidden_too;
    // synthesis translate_on
    wire also_seen;
endmodule
