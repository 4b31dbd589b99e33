// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// A model in C beside the hardware.
module top(input logic clk, input logic [7:0] x, output logic [7:0] y);
    import "DPI-C" function int unsigned model_step(input int unsigned x);
    import "DPI-C" context task model_log(input string text);
    export "DPI-C" function get_y;
    function int get_y();
        return y;
    endfunction
    int unsigned expected_y;
    initial model_log("start");
    always @(posedge clk) expected_y = model_step(x);
    always_ff @(posedge clk) y <= x + 8'd1;
endmodule
