// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module delay(input clk, input d, output reg q);
    always @(posedge clk) q <= d;
endmodule
// synthesis translate_off
module delay_bench;
    reg clk, d;
    delay dut(.clk(clk), .d(d));
endmodule
