// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Streams, casts and what else saves a line.
module top #(parameter type word_t = logic [7:0], parameter real GAIN = 1.5,
             parameter string NAME = "stage")
    (input logic clk, input word_t a, output word_t mirrored, output logic [3:0] low,
     output logic [15:0] pair);
    localparam int SCALED = int'(GAIN * 4.0);
    localparam int LONG = (NAME == "stage") ? 2 : 9;
    logic [SCALED-1:0] scaled;
    logic [$bits(word_t)-1:0] copy;
    logic signed [LONG:0] sign;
    word_t either;
    assign mirrored = {<<{a}};
    assign {>>{low, scaled[1:0]}} = a[5:0];
    assign pair = {2{a}} ** 2;
    assign sign = signed'(a[1:0]) <<< 1;
    always_comb either = word_t'(16'(a) + 1) ^ '1;
    always_ff @(posedge clk) begin
        copy <= a;
        copy[0] <= a ==? 8'b1??????1;
    end
endmodule
