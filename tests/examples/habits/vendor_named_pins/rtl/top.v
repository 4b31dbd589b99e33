// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Primitives of a device whose library nobody has on his desk.
module top(input clk_p, input clk_n, input [3:0] d, output [3:0] q, inout sda);
    wire clk_in, clk, locked, feedback, sda_in, sda_t, unused_out;
    wire [3:0] registered;
    DIFF_BUFFER #(
        .TERMINATION("TRUE"),
        .STANDARD("LVDS_25")
    ) u_clk_in (
        .I (clk_p),
        .IB(clk_n),
        .O (clk_in)
    );
    CLOCK_MANAGER #(.MULT(8.5), .DIVIDE(2), .PERIOD(10.0), .PHASE(-90)) u_clocks (
        .CLKIN(clk_in), .CLKFB(feedback), .CLKFBOUT(feedback),
        .CLKOUT0(clk), .CLKOUT1(), .LOCKED(locked), .RST(1'b0), .PWRDWN(!locked));
    genvar i;
    generate
        for (i = 0; i < 4; i = i + 1) begin : bits
            (* BEL = "FF", LOC = "X1Y2" *)
            FLOP_CE #(.INIT(1'b0)) u_ff(.C(clk), .CE(1'b1), .D(d[i]), .Q(registered[i]));
        end
    endgenerate
    OUT_BUFFER u_out[3:0] (.I(registered), .O(q));
    IO_BUFFER u_sda(.IO(sda), .I(1'b0), .O(sda_in), .T(sda_t));
    LOOKUP4 #(.INIT(16'hCAFE)) u_lut(.A(d[0]), .B(d[1]), .C(d[2]), .D(sda_in), .O(sda_t));
endmodule
