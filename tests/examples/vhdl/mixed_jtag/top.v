// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Verilog over VHDL with the JTAG primitive.
module top(input tdi);
    wire tdo;
    Wrapped u(.tdi(tdi), .tdo(tdo));
endmodule
