// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// The nets of an interface stand in its node; a child drives them through a modport.
interface link_if #(parameter int W = 2);
    logic         valid;
    logic         ready;
    logic [W-1:0] data;
    logic         spare;
    modport source (output valid, data, input ready);
    modport sink (input valid, data, output ready);
endinterface

module producer(input logic clk, link_if.source out);
    always_ff @(posedge clk) out.valid <= out.ready;
    assign out.data = '1;
endmodule

module consumer(link_if.sink in);
    assign in.ready = in.valid;
endmodule

module top(input logic clk);
    link_if bus ();
    producer p(.clk, .out(bus));
    consumer c(.in(bus));
endmodule
