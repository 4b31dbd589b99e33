// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input logic clk, input logic d, output logic q);
    timeunit 1ns;
    timeprecision 1ps;
    wire middle;
    scaled u_scaled(.q(middle), .*);
    plain u_plain(.d(middle), .*);
endmodule
