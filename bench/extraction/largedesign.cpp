// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "largedesign.h"

namespace {

// A node has about 190 bits, and a stage with all that belongs to it five nodes.
const char Stages[] = R"(package bench_types;
  typedef enum logic [2:0] {Idle, Fetch, Run, Flush, Done} state_t;
  typedef struct packed {
    logic valid;
    logic ready;
    state_t state;
    logic [7:0] tag;
    logic [63:0] data;
  } link_t;
endpackage

interface stream_bus #(parameter int WIDTH = 32) (input logic clk);
  logic valid;
  logic ready;
  logic [WIDTH-1:0] data;
  logic [3:0] strobe;
  modport source(output valid, output data, output strobe, input ready);
  modport sink(input valid, input data, input strobe, output ready);
endinterface

module bench_register #(parameter int WIDTH = 8, parameter int ID = 0)
  (input logic clk, input logic enable, input logic [WIDTH-1:0] d, output logic [WIDTH-1:0] q);
  logic [WIDTH-1:0] held;
  always_ff @(posedge clk) if (enable) held <= d ^ WIDTH'(ID);
  assign q = held;
endmodule

module bench_stage #(parameter int WIDTH = 32, parameter int ID = 0)
  (input logic clk, input logic reset, input bench_types::link_t in,
   output bench_types::link_t out, stream_bus.source bus);
  import bench_types::*;
  state_t state;
  link_t held;
  logic [WIDTH-1:0] sum;
  logic [WIDTH-1:0] taps [0:3];
  logic [3:0][15:0] parts;
  logic busy, full;
  always_ff @(posedge clk) begin
    if (reset) begin
      state <= Idle;
      held <= '0;
    end else begin
      held <= in;
      state <= in.valid ? Run : Idle;
    end
    sum <= sum + WIDTH'(held.data) + WIDTH'(ID);
    taps[0] <= sum;
    taps[1] <= taps[0];
    taps[2] <= taps[1];
    taps[3] <= taps[2];
  end
  for (genvar i = 0; i < 4; i++) begin : lane
    logic [15:0] part;
    logic carry;
    assign part = held.data[i * 16 +: 16];
    assign carry = ^part;
    assign parts[i] = part + 16'(carry);
  end
  bench_register #(.WIDTH(32), .ID(ID)) word[1:0](
    .clk(clk), .enable(in.valid), .d({parts[3:2], parts[1:0]}), .q(out.data));
  function automatic logic [15:0] folded(input logic [63:0] value, input logic [1:0] way);
    folded = '0;
    for (int i = 0; i < 4; i++)
      folded ^= value[i * 16 +: 16] + 16'(way);
  endfunction
  logic [15:0] check, next_check, level;
  logic match, late, odd;
  always_comb begin
    next_check = check;
    match = 1'b0;
    case (state)
      Idle: next_check = in.data[15:0];
      Fetch: next_check = check ^ folded(in.data, in.tag[1:0]);
      Run: begin
        next_check = check + {parts[0][7:0], parts[1][15:8]};
        match = held.tag == in.tag && held.valid;
      end
      Flush: if (in.ready) next_check = ~check; else next_check = {check[0], check[15:1]};
      default: next_check = '0;
    endcase
  end
  always_ff @(posedge clk) begin
    check <= next_check;
    if (match && !reset) level <= level + 16'd1;
    else if (late) level <= level - 16'd1;
  end
  assign late = (held.data[31:0] > in.data[31:0]) | (odd & match & ~in.valid);
  assign odd = ^check ^ (sum[3] & taps[1][0]);
  assign busy = state != Idle;
  assign full = &taps[3];
  assign bus.valid = busy;
  assign bus.data = 32'(sum);
  assign bus.strobe = {busy, full, 2'b01};
  assign out.valid = held.valid;
  assign out.ready = bus.ready;
  assign out.state = state;
  assign out.tag = held.tag;
endmodule

module bench_sink #(parameter int WIDTH = 24, parameter int ID = 0)
  (input logic clk, stream_bus.sink bus, output logic done);
  logic [WIDTH-1:0] count;
  logic [31:0] last;
  always_ff @(posedge clk) if (bus.valid) begin
    count <= count + 1;
    last <= bus.data ^ ID;
  end
  assign bus.ready = count[0];
  assign done = last[3];
endmodule
)";

// '@' stands for the factor of the numbers of all instances, which 0 makes equal.
const char Hierarchy[] = R"(
module bench_cluster #(parameter int ID = 0)
  (input logic clk, input logic reset, input bench_types::link_t in,
   output bench_types::link_t out);
  bench_types::link_t links [0:%STAGES];
  logic [%STAGES-1:0] done;
  assign links[0] = in;
  assign out = links[%STAGES];
  for (genvar i = 0; i < %STAGES; i++) begin : pipeline_stages_of_the_cluster
    stream_bus #(.WIDTH(32)) bus(.clk(clk));
    bench_stage #(.WIDTH(40 + i % 8), .ID(@ * (ID * %STAGES + i)))
      unit(.clk(clk), .reset(reset), .in(links[i]), .out(links[i + 1]), .bus(bus));
    bench_sink #(.WIDTH(24 + i % 4), .ID(@ * (ID * %STAGES + i)))
      sink(.clk(clk), .bus(bus), .done(done[i]));
  end
endmodule

module bench_region #(parameter int ID = 0)
  (input logic clk, input logic reset, input bench_types::link_t in,
   output bench_types::link_t out);
  bench_types::link_t links [0:%CLUSTERS];
  assign links[0] = in;
  assign out = links[%CLUSTERS];
  for (genvar i = 0; i < %CLUSTERS; i++) begin : clusters_along_the_memory_channel
    bench_cluster #(.ID(@ * (ID * %CLUSTERS + i)))
      unit(.clk(clk), .reset(reset), .in(links[i]), .out(links[i + 1]));
  end
endmodule

module bench_top
  (input logic clk, input logic reset, input bench_types::link_t in,
   output bench_types::link_t out);
  bench_types::link_t links [0:%REGIONS];
  assign links[0] = in;
  assign out = links[%REGIONS];
  for (genvar i = 0; i < %REGIONS; i++) begin : regions_of_the_processing_mesh
    bench_region #(.ID(@ * i))
      unit(.clk(clk), .reset(reset), .in(links[i]), .out(links[i + 1]));
  end
endmodule
)";

} // namespace

QByteArray LargeDesign::source() const
{
    return Stages + QByteArray(Hierarchy)
                        .replace("%REGIONS", QByteArray::number(regions))
                        .replace("%CLUSTERS", QByteArray::number(clustersPerRegion))
                        .replace("%STAGES", QByteArray::number(stagesPerCluster))
                        .replace("@", hasOwnModules ? "1" : "0");
}
