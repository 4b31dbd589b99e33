// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// A bus of pads, driven by turns.
module top(inout [1:0] pad, inout sda, input [1:0] d, input oe, output [1:0] in);
    tri  [1:0] shared;
    tri1       pulled;
    wand       both;
    assign pad = oe ? d : 2'bzz;
    assign in = pad;
    assign shared = oe ? d : 2'bzz;
    bufif1 u_buffer(pulled, d[0], oe);
    pullup (sda);
    assign both = d[0];
    assign both = d[1];
    sub u_sub(.io(shared), .sda(sda));
endmodule
module sub(inout [1:0] io, inout sda);
    wire seen = io[0];
endmodule
