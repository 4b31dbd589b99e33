// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top #(parameter int WIDTH = 8, parameter int LANES = 2) (input logic [WIDTH-1:0] a);
    if (WIDTH % LANES != 0) begin : bad
        $error("WIDTH is no multiple of LANES");
        $fatal(1, "stop");
    end else begin : good
        wire [WIDTH/LANES-1:0] lane;
    end
    if (WIDTH > 4) $info("a wide one");
    initial begin
        if (WIDTH < 2) $fatal(1, "%m: too narrow");
        assert (LANES > 0);
    end
    final $display("the end of %m");
endmodule
