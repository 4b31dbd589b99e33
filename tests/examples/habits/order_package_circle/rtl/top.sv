// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input logic [a_pkg::A-1:0] a);
endmodule
