// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`default_nettype none
package sizes_pkg;
    localparam int SIZE = 2;
endpackage
module leaf(input wire i, output wire o);
    wire [sizes_pkg::SIZE-1:0] chain;
    assign chain = {i, chain[1]};
    assign o = chain[0];
endmodule
