// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Everything that a module beside the design can read and drive, under all kinds of names. Each
// signal changes with the counter; those with "hole" in their names have no driver.
typedef struct packed {
    logic       on;
    logic [1:0] level;
    logic       \m.n ;
} item_t;

typedef union packed {
    logic [3:0]      whole;
    logic [1:0][1:0] pairs;
} pair_t;

typedef enum logic [1:0] {RED, GREEN, BLUE} colour_e;

interface bus_if (input logic clk);
    logic [3:0] data;
    logic       hole;
endinterface

module leaf (
    input  logic       clk,
    input  logic [3:0] from,
    output logic [3:0] q,
    output wire        hole_out,
    input  wire  [1:0] open
);
    wire  [3:0] hole;
    logic [3:0] vhole;
    wire       \hole.[0] ;
    wire        \with.point  = q[0];
    wire        two__under = q[1];
    initial q = '0;
    always_ff @(posedge clk) q <= from + 4'd3;
endmodule

module zoo (
    input logic clk
);
    logic [7:0] count = '0;
    always_ff @(posedge clk) count <= count + 8'd37;

    // Vectors
    wire  [0:3]      rising = count[3:0];
    wire  [2:-1]     low = count[4:1];
    wire  [0:0]      one = count[0];
    logic [1:0][3:0] packed2;
    assign packed2 = count;
    integer          number;
    assign number = {4{count}};
    byte             small_number;
    assign small_number = count;

    // Arrays, structures, enumerations
    logic [3:0] unpacked[0:1];
    assign unpacked[0] = count[3:0];
    assign unpacked[1] = count[7:4];
    logic       bits[3:2];
    assign bits[2] = count[2];
    assign bits[3] = count[3];
    item_t      item;
    assign item = count[3:0];
    item_t [1:0] items;
    assign items = count;
    pair_t      pair;
    assign pair = count[5:2];
    colour_e    colour;
    assign colour = count[0] ? GREEN : BLUE;

    // Escaped names
    wire       \a/b = count[0];
    wire       \c.d = count[1];
    wire       \e[0] = count[2];
    wire [1:0] \bus/x[3] = count[1:0];
    wire       \always = count[4];
    wire       \*- = count[5];

    // Scopes
    if (1) begin
        wire unnamed = count[6];
    end
    for (genvar n = -1; n < 2; n++) begin : g
        wire [3:0] inner = count[3:0] + n;
        leaf u (.clk, .from(inner), .q(), .hole_out(), .open());
        for (genvar m = 0; m < 2; m++) begin : h
            wire [1:0] deep = inner[m*2 +: 2];
        end
    end
    if (1) begin : \s.t
        wire inner = count[7];
    end
    if (1) begin : \u[0]
        wire inner = count[1];
    end

    // Instances
    leaf \l/0.1 (.clk, .from(count[3:0]), .q(), .hole_out(), .open());
    leaf row[0:1] (.clk, .from(count[7:0]), .q(), .hole_out(), .open());
    bus_if bus (.clk);
    bus_if buses[0:1] (.clk);
    assign bus.data = count[3:0];
    assign buses[0].data = count[4:1];
    assign buses[1].data = count[5:2];

    // Without a driver
    wire  [7:0]      hole;
    wire             hole_bit;
    wire  [0:7]      hole_up;
    wire  [7:0]      hole_part;
    wire  [3:0]      hole_array[0:1];
    wire item_t      hole_item;
    logic [3:0]      vhole;
    logic            vhole_bit;
    item_t           vhole_item;
    logic [1:0][3:0] vhole_packed;
    logic [3:0]      vhole_unpacked[0:1];
    wire             \hole.e ;
    assign hole_part[7:6] = count[1:0];
    assign hole_part[1:0] = count[3:2];
    // Partly written by processes
    logic [3:0] half_hole;
    logic [3:0] half_hole_now;
    always_ff @(posedge clk) half_hole[1:0] <= count[1:0];
    always @(count) half_hole_now[3:2] = count[1:0];
endmodule
