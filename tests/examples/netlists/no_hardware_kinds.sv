// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// What has no hardware value is excluded from both uses.
module top(input logic a);
    supply0 ground;
    supply1 power;
    real    number;
    string  text;
    event   happening;
    wire    plain;
    wire    seen = a;
    initial number = 0.5;
endmodule
