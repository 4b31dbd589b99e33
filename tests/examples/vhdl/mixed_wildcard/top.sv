// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// An entity connected by the names of its ports, and an instance array of it.
module top(input logic clk, input logic [1:0] data, output logic ready);
    logic [1:0] idle;
    logic [1:0] readies;
    cell_e u_all(.*);
    cell_e u_some(.clk, .data(idle), .*, .ready());
    cell_e u_row[2](.clk, .data, .ready(readies));
endmodule
