// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// An array whose index runs is one memory.
module top(input logic [7:0] a, output logic [7:0] reversed, output logic [2:0] first,
           output logic [1:0] flags);
    logic [3:0] table_of [4];
    always_comb begin
        foreach (reversed[i]) reversed[i] = a[7 - i];
        first = '0;
        for (int i = 7; i >= 0; i--) begin
            if (!a[i]) continue;
            first = 3'(i);
            break;
        end
        foreach (table_of[i]) table_of[i] = 4'(i);
    end
    always_comb begin : second
        automatic int n = 0;
        flags = '0;
        do begin
            flags ^= a[n*2 +: 2];
            n++;
        end while (n < 4);
    end
endmodule
