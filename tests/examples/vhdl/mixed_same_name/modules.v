// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module common(input i);
    wire in_verilog;
endmodule

module caller(input i);
    common u_common(.i(i));
endmodule
