// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input clk, output txd);
    uart u_uart(.clk(clk), .txd(txd));
endmodule
