// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input logic [3:0] a, output logic [1:0] first, output logic [1:0] second,
           output logic third, output logic fourth);
    always_comb begin
        unique case (a) inside
            4'b1???:     first = 2'd3;
            [4'd4:4'd7]: first = 2'd2;
            2, 3:        first = 2'd1;
            default:     first = 2'd0;
        endcase
        priority casez (a)
            4'b???1: second = 2'd1;
            4'b??1?: second = 2'd2;
            4'b?1??: second = 2'd3;
            default: second[0] = 1'b0;
        endcase
        unique0 if (a[0])
            third = 1'b1;
        else if (a[1])
            third = 1'b0;
        casex (a)
            4'bxx01: fourth = 1'b1;
            default: fourth = a inside {4'd3, [4'd8:4'd9]};
        endcase
    end
endmodule
