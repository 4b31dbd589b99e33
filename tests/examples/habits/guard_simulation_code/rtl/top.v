// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Code for the simulator stands between the hardware, with nothing around it.
`timescale 1ns / 1ps
module top(input clk, input rst_n, output reg [3:0] count);
    reg [1:0] watched;
    reg       forced, generated;
    wire      spare;
    event     ready;
    initial begin
        $timeformat(-9, 1, " ns", 10);
        $dumpfile("top.vcd");
        $dumpvars(0, top);
        force forced = 1'b1;
        #100 release forced;
        wait (count == 4'd3);
        fork
            #10 watched = 2'd1;
            #20 -> ready;
        join
        repeat (3) @(posedge clk);
        @(ready) $display("%m: ready at %0t", $time);
        if ($test$plusargs("long")) #1000 ;
        $finish;
    end
    initial begin
        generated = 1'b0;
        forever #5 generated = ~generated;
    end
    always @(posedge clk or negedge rst_n)
        if (!rst_n) count <= #1 4'd0;
        else begin
            count <= #1 count + 4'd1;
            if (count === 4'bxxxx) begin
                $display("ERROR: no value in %m");
                $stop;
            end
        end
endmodule
