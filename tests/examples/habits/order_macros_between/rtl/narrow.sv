// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module narrow(input logic [`W-1:0] a);
endmodule
`undef W
`define W 3
