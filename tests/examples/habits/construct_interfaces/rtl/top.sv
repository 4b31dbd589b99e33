// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module source(stream_if.source out);
    always_ff @(posedge out.clk) if (out.fires()) out.data <= out.data + 1'b1;
    assign out.valid = 1'b1;
endmodule
module buffer #(parameter int N = 2) (stream_if.sink in[N], stream_if out);
    for (genvar i = 0; i < N; i++) begin : lane
        assign in[i].ready = out.ready;
    end
    assign out.valid = in[0].valid;
    assign out.data  = in[0].data;
endmodule
module top(input logic clk, output logic done);
    stream_if #(logic [3:0]) in[2](.clk(clk));
    stream_if #(.T(logic [3:0])) out(.clk(clk));
    source u_source[2](.out(in));
    buffer #(2) u_buffer(.in(in), .out(out));
    assign out.ready = 1'b1;
    assign done = out.fires();
endmodule
