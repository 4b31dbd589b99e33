// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module from_verilog(input i);
    deeper u_deeper(.i(i));
endmodule

module not_needed(input i);
    missing_module u();
endmodule
