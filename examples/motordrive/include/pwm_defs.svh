// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`ifndef PWM_DEFS_SVH
`define PWM_DEFS_SVH

// Levels of the inputs of the gate drivers. The macro GATE_ON comes from the project.
`define GATE_LEVEL(on) ((on) ? `GATE_ON : !`GATE_ON)

`endif
