// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module sub(input clk, input [`DATA_RANGE] d, output reg [`DATA_RANGE] q);
    `CLOCKED(q <= d;)
endmodule
