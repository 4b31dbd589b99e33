// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`resetall
module plain(input clk, input d, output reg q);
    always @(posedge clk) q <= #0.5 d;
endmodule
