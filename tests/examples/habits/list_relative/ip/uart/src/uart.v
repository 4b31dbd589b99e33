// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`include "uart_regs.vh"
module uart(input clk, output txd);
    wire tick;
    baud #(.BITS(`UART_DIV)) u_baud(.clk(clk), .tick(tick));
    reg line;
    always @(posedge clk) if (tick) line <= ~line;
    assign txd = line;
endmodule
