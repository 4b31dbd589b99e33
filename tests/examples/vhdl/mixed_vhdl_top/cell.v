// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module Cell(input i, output o);
    wire inner = i;
    wire idle;
endmodule
