// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input logic clk);
    wb_if #(.AW(2)) bus(.clk(clk));
    master u_master(.bus(bus), .clk(clk));
    assign bus.ack = bus.stb;
endmodule
