// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`default_nettype none

// First-word-fall-through FIFO of 2**ADDR_WIDTH words with one clock.
module sync_fifo #(
    parameter WIDTH      = 8,
    parameter ADDR_WIDTH = 4
) (
    input  wire             clk,
    input  wire             rst_n,
    input  wire [WIDTH-1:0] wr_data,
    input  wire             wr_en,
    output wire             full,
    output wire [WIDTH-1:0] rd_data,
    input  wire             rd_en,
    output wire             empty
);

    reg [WIDTH-1:0]  mem [0:(1 << ADDR_WIDTH) - 1];
    // One bit more than the address: the pointers differ in it when the FIFO is full.
    reg [ADDR_WIDTH:0] wr_ptr;
    reg [ADDR_WIDTH:0] rd_ptr;

    wire [ADDR_WIDTH:0] level = wr_ptr - rd_ptr;

    assign empty   = level == 0;
    assign full    = level[ADDR_WIDTH];
    assign rd_data = mem[rd_ptr[ADDR_WIDTH-1:0]];

    always @(posedge clk)
        if (wr_en && !full)
            mem[wr_ptr[ADDR_WIDTH-1:0]] <= wr_data;

    always @(posedge clk or negedge rst_n)
        if (!rst_n) begin
            wr_ptr <= {(ADDR_WIDTH + 1){1'b0}};
            rd_ptr <= {(ADDR_WIDTH + 1){1'b0}};
        end else begin
            if (wr_en && !full)
                wr_ptr <= wr_ptr + 1'b1;
            if (rd_en && !empty)
                rd_ptr <= rd_ptr + 1'b1;
        end

endmodule

`default_nettype wire
