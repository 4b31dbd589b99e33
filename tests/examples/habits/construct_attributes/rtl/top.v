// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

(* keep_hierarchy = "yes", top *)
module top((* clock_buffer_type = "none" *) input clk, input [1:0] d,
           (* iob = "true" *) output reg [1:0] q);
    (* keep = "true", mark_debug *) wire [1:0] watched;
    (* fsm_encoding = "one_hot" *)
    reg [1:0] state = 2'b01;
    (* async_reg = "true", dont_touch = 1 *) reg [1:0] sync;
    assign watched = d + (* adder = "carry" *) 2'd1;
    (* black_box_pad_pin = "x", loc = "X1Y2" *) leaf #(.A(1)) u_leaf ((* pin *) .i(clk));
    always @(posedge clk) begin
        (* full_case, parallel_case *)
        case (state)
            2'b01: state <= 2'b10;
            2'b10: state <= 2'b01;
        endcase
        sync <= watched;
        q    <= sync;
    end
endmodule
module leaf #(parameter A = 0) (input i);
endmodule
