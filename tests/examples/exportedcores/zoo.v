// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// The same for Verilog of 2005: also names that are keywords of SystemVerilog.
module leaf (
    input            clk,
    input      [3:0] from,
    output reg [3:0] q,
    input      [1:0] open
);
    wire [3:0] hole;
    wire       \hole.[0] ;
    wire       \with.point  = q[0];
    initial q = 0;
    always @(posedge clk) q <= from + 4'd3;
endmodule

module zoo (
    input clk
);
    reg  [7:0] count;
    wire [0:3] rising = count[3:0];
    wire [2:-1] low = count[4:1];
    wire [0:0] one = count[0];
    integer    number;
    wire       interface = count[0];
    wire [1:0] unique = count[2:1];
    wire       \a/b = count[0];
    wire       \c.d = count[1];
    wire       \e[0] = count[2];
    wire [1:0] \bus/x[3] = count[1:0];
    wire       \always = count[4];
    genvar     n;

    generate
        for (n = 0; n < 2; n = n + 1) begin : do
            wire [3:0] inner = count[3:0] + n;
            leaf u (.clk(clk), .from(inner), .q(), .open());
        end
        if (1) begin : \s.t
            wire inner = count[7];
        end
    endgenerate

    leaf \l/0.1 (.clk(clk), .from(count[3:0]), .q(), .open());
    leaf row[0:1] (.clk(clk), .from(count), .q(), .open());

    wire [7:0] hole;
    wire       package;
    wire [7:0] hole_part;
    wire       \hole.e ;
    reg  [3:0] half_hole;
    reg  [3:0] lone, lone_too;
    integer    lone_number;
    assign hole_part[7:6] = count[1:0];

    initial count = 0;
    always @(posedge clk) count <= count + 8'd37;
    always @(count) number = {4{count}};
    always @(posedge clk) half_hole[1:0] <= count[1:0];
endmodule
