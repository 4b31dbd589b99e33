// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`include "core_pkg.sv"
import core_pkg::*;
module top(input control_t control, output logic on);
    core u_core(.*);
endmodule
