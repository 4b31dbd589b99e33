// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input fixed_pkg::sample_t x, output fixed_pkg::sample_t y);
    assign y = fixed_pkg::half(x);
endmodule
