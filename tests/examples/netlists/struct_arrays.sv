// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Members of structs in arrays, in scopes and behind ports: an input is driven where what it is
// connected to is.
typedef struct packed {
    logic       on;
    logic [1:0] level;
} item_t;

module child(input item_t i, output item_t o);
    assign o.on = i.on;
endmodule

module top(input logic a);
    wire item_t row [0:1];
    wire item_t from_child;
    assign row[1].level = {a, a};
    child u(.i(row[1]), .o(from_child));
    if (1) begin : scope
        wire item_t nested;
        assign nested.on = a;
    end
endmodule
