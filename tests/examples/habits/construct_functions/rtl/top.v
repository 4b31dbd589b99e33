// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Constants that a function counts, before there was a system function for it.
module top #(parameter DEPTH = 20) (clk, data, sum, ones);
    function integer clogb2;
        input integer depth;
        integer i;
        begin
            clogb2 = 0;
            for (i = depth - 1; i > 0; i = i >> 1)
                clogb2 = clogb2 + 1;
        end
    endfunction
    function automatic [15:0] factorial(input [3:0] n);
        begin
            factorial = 1;
            while (n > 1) begin
                factorial = factorial * n;
                n = n - 1;
            end
        end
    endfunction
    localparam ADDR = clogb2(DEPTH);
    localparam [15:0] SIX = factorial(3);
    input                 clk;
    input      [ADDR-1:0] data;
    output reg [ADDR-1:0] sum;
    output reg [2:0]      ones;
    wire       [SIX-1:0]  six;
    integer n;
    task add;
        input [ADDR-1:0] value;
        sum = sum + value;
    endtask
    always @(posedge clk) begin : counting
        reg [2:0] count;
        count = 0;
        for (n = 0; n < ADDR; n = n + 1)
            count = count + data[n];
        ones <= count;
        add(data);
    end
endmodule
