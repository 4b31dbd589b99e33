// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`include "core_pkg.sv"
module core(input core_pkg::control_t control, output logic on);
    assign on = core_pkg::is_on(control);
endmodule
