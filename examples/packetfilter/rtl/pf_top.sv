// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`include "pf_macros.svh"

// Packet filter: several streams of frames in, one out. Each lane has its own rules; the output
// says from which lane a frame is, and whether a rule marked it.
module pf_top
    import pf_pkg::*;
#(
    parameter int  LANES      = 4,
    parameter int  RULES      = 4,
    parameter int  ADDR_WIDTH = 6,
    localparam int LANE_WIDTH = $clog2(LANES)
) (
    input  logic                                    clk,
    input  logic                                    rst_n,

    // Streams in
    input  logic [LANES-1:0][DATA_WIDTH-1:0]        s_data,
    input  logic [LANES-1:0]                        s_last,
    input  logic [LANES-1:0]                        s_valid,
    output logic [LANES-1:0]                        s_ready,

    // Stream out
    output word_t                                   m_data,
    output logic                                    m_last,
    output logic                                    m_mark,
    output logic [LANE_WIDTH-1:0]                   m_lane,
    output logic                                    m_valid,
    input  logic                                    m_ready,

    // Registers, one window per lane
    input  logic [LANE_WIDTH-1:0]                   cfg_lane,
    input  logic [ADDR_WIDTH-1:0]                   cfg_addr,
    input  logic [31:0]                             cfg_wdata,
    input  logic                                    cfg_write,
    output logic [31:0]                             cfg_rdata
);

    // Left open on purpose: a virtual I/O core drives it to block lanes.
    wire [LANES-1:0] dbg_block;

    axis_if #(.WIDTH(DATA_WIDTH)) lane_in [LANES] ();
    axis_if #(.WIDTH(DATA_WIDTH)) lane_out [LANES] ();

    // The lane number is in the bits above the word.
    axis_if #(.WIDTH(LANE_WIDTH + DATA_WIDTH)) merged ();
    axis_if #(.WIDTH(LANE_WIDTH + DATA_WIDTH)) leaving ();

    logic [31:0] lane_rdata [LANES];

    for (genvar n = 0; n < LANES; n++) begin : lane
        reg_if #(.ADDR_WIDTH(ADDR_WIDTH)) bus ();

        assign bus.addr      = cfg_addr;
        assign bus.wdata     = cfg_wdata;
        assign bus.write     = cfg_write && cfg_lane == n;
        assign lane_rdata[n] = bus.rdata;

        assign lane_in[n].data  = s_data[n];
        assign lane_in[n].last  = s_last[n];
        assign lane_in[n].mark  = 1'b0;
        assign lane_in[n].valid = s_valid[n];
        assign s_ready[n]       = lane_in[n].ready;

        // The last lane has a short way from the pads and needs no register stage.
        pf_lane #(
            .RULES      (RULES),
            .INPUT_SKID (n != LANES - 1)
        ) u_lane (
            .clk,
            .rst_n,
            .block (dbg_block[n]),
            .bus   (bus),
            .in    (lane_in[n]),
            .out   (lane_out[n])
        );
    end

    assign cfg_rdata = lane_rdata[cfg_lane];

    pf_arbiter #(.LANES(LANES)) u_arbiter (
        .clk,
        .rst_n,
        .in  (lane_out),
        .out (merged)
    );

    axis_skid #(.WIDTH(LANE_WIDTH + DATA_WIDTH)) u_out_skid (
        .clk,
        .rst_n,
        .in  (merged),
        .out (leaving)
    );

    assign {m_lane, m_data} = leaving.data;
    assign m_last           = leaving.last;
    assign m_mark           = leaving.mark;
    assign m_valid          = leaving.valid;
    assign leaving.ready    = m_ready;

endmodule
