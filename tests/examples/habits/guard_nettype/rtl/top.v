// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`resetall
`default_nettype none
module top(input wire a, output wire y);
    lax u_lax(.a(a), .b(1'b1), .y(y));
endmodule
