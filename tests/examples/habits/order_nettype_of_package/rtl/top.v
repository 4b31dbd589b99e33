// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Old Verilog: the nets of instances need no declaration here.
module top(input a, output y);
    leaf u_first(a, between);
    leaf u_second(between, y);
endmodule
