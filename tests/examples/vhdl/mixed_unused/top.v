// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input a, output b);
    assign b = a;
endmodule
