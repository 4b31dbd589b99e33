// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// The whole folder is in the list, the bench as well.
program test(input logic clk, input logic q);
    initial begin
        repeat (10) @(posedge clk);
        $display("q = %b", q);
        $exit;
    end
endprogram
module bench;
    bit   clk;
    logic q;
    always #5 clk = ~clk;
    top dut(.clk, .q);
    test u_test(.clk, .q);
endmodule
