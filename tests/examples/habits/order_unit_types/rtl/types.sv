// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// In no package: in the compilation unit.
parameter int LANES = 2;
typedef enum logic [1:0] {IDLE, WAIT, DONE} state_t;
function automatic state_t next_of(input state_t now, input logic go);
    case (now)
        IDLE:    return go ? WAIT : IDLE;
        WAIT:    return DONE;
        default: return IDLE;
    endcase
endfunction
