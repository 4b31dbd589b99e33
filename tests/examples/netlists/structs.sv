// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// A member each of a packed struct; unions and enums are one vector.
package types;
    typedef struct packed {
        logic       flag;
        logic [2:0] code;
    } inner_t;
    typedef struct packed {
        logic [1:0] head;
        inner_t     body;
    } outer_t;
    typedef union packed {
        logic [3:0]      whole;
        logic [1:0][1:0] halves;
    } union_t;
    typedef enum logic [1:0] {IDLE, BUSY} state_t;
    localparam int UNUSED = 3;
endpackage

module top
    import types::*;
(
    input logic   a,
    input outer_t in_struct
);
    wire inner_t part;
    wire outer_t whole;
    wire outer_t open;
    union_t      u;
    state_t      state;
    assign part.code = {a, a, a};
    assign whole     = in_struct;
    assign u.whole   = {a, a, a, a};
    always_comb state = a ? BUSY : IDLE;
endmodule
