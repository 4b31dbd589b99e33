// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`include "pf_macros.svh"

// Watches a stream and gives out the header of each frame: with its second word, or, for a frame of
// a single word, as a runt.
module pf_parser
    import pf_pkg::*;
(
    input  logic     clk,
    input  logic     rst_n,
    axis_if.monitor  stream,
    output header_t  header,
    output logic     header_valid,
    output logic     runt
);

    typedef enum logic [1:0] {AT_FIRST, AT_SECOND, AT_REST} place_e;

    place_e  place;
    place_e  next_place;
    header_t next_header;
    logic    beat;

    assign beat = stream.valid && stream.ready;

    always_comb begin
        next_place  = place;
        next_header = header;
        if (beat) begin
            unique case (place)
                AT_FIRST: begin
                    {next_header.kind, next_header.port} = stream.data;
                    next_place = AT_SECOND;
                end
                AT_SECOND: begin
                    next_header.source = stream.data;
                    next_place         = AT_REST;
                end
                default: ;
            endcase
            if (stream.last)
                next_place = AT_FIRST;
        end
    end

    `PF_FF(place, next_place, AT_FIRST)
    `PF_FF(header, next_header, '0)
    `PF_FF(header_valid, beat && (place == AT_SECOND || (place == AT_FIRST && stream.last)), 1'b0)
    `PF_FF(runt, beat && place == AT_FIRST && stream.last, 1'b0)

endmodule
