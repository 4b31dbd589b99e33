// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module a_top import b_config_pkg::*; (input logic clk, output address_t address);
    localparam int UNUSED = c_base_pkg::BYTES;
    always_ff @(posedge clk) address <= address + 1'b1;
endmodule
