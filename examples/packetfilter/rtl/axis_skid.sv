// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Register stage in a stream that breaks the path of ready as well, at full throughput.
module axis_skid #(
    parameter int WIDTH = 32
) (
    input logic    clk,
    input logic    rst_n,
    axis_if.sink   in,
    axis_if.source out
);

    typedef struct packed {
        logic             last;
        logic             mark;
        logic [WIDTH-1:0] data;
    } beat_t;

    beat_t held;
    beat_t current;
    logic  held_valid;
    logic  current_valid;
    logic  move;

    assign move      = out.ready || !current_valid;
    assign in.ready  = !held_valid;
    assign out.data  = current.data;
    assign out.last  = current.last;
    assign out.mark  = current.mark;
    assign out.valid = current_valid;

    always_ff @(posedge clk or negedge rst_n)
        if (!rst_n) begin
            held          <= '0;
            current       <= '0;
            held_valid    <= 1'b0;
            current_valid <= 1'b0;
        end else if (move) begin
            current       <= held_valid ? held : '{last: in.last, mark: in.mark, data: in.data};
            current_valid <= held_valid || in.valid;
            held_valid    <= 1'b0;
        end else if (in.valid && in.ready) begin
            held       <= '{last: in.last, mark: in.mark, data: in.data};
            held_valid <= 1'b1;
        end

endmodule
