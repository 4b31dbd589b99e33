// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// What a task gives out is driven; locals of tasks, functions and processes are no nets.
module top(input clk, input [1:0] a);
    reg  [1:0] from_task;
    reg        from_initial;
    wire [1:0] from_function = invert(a);
    wire       open;

    function [1:0] invert;
        input [1:0] value;
        reg   [1:0] local_of_function;
        begin
            local_of_function = ~value;
            invert = local_of_function;
        end
    endfunction

    task copy;
        input  [1:0] source;
        output [1:0] target;
        reg    [1:0] local_of_task;
        begin
            local_of_task = source;
            target = local_of_task;
        end
    endtask

    initial from_initial = 1'b0;

    always @(posedge clk) begin : process
        reg     local_of_process;
        integer n;
        local_of_process = 1'b0;
        for (n = 0; n < 2; n = n + 1)
            local_of_process = local_of_process ^ a[n];
        copy(a, from_task);
    end
endmodule
