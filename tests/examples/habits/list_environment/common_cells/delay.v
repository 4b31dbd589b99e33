// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module delay(input clk, input [`WIDTH-1:0] d, output reg [`WIDTH-1:0] q);
    reg [`WIDTH-1:0] first;
    always @(posedge clk) begin
        first <= d;
        q     <= first;
    end
endmodule
