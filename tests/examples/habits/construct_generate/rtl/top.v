// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Generate blocks with and without names, in the ways of three decades.
module top #(parameter STAGES = 2, parameter MODE = "PIPE", parameter [1:0] KIND = 2'd2)
    (input clk, input [3:0] d, output [3:0] q);
    wire [3:0] stage [0:STAGES];
    genvar i;
    assign stage[0] = d;
    generate
        for (i = 0; i < STAGES; i = i + 1) begin : gen
            reg [3:0] r;
            always @(posedge clk) r <= stage[i];
            assign stage[i+1] = r;
        end
        case (KIND)
            2'd0, 2'd1: begin : none
                wire low;
            end
            2'd2: begin : two
                wire exact;
            end
            default: begin
                wire other;
            end
        endcase
        if (MODE == "PIPE")
            pipe u_pipe(.i(clk));
        else
            wide u_wide(.i(clk));
        if (STAGES > 4) begin
            wire many;
        end else begin
            wire few;
        end
    endgenerate
    for (i = 3; i >= 0; i = i - 2) begin
        wire unnamed = d[i];
    end
    assign q = stage[STAGES];
endmodule
module pipe(input i);
endmodule
module wide(input i);
endmodule
