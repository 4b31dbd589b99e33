// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`default_nettype none

// CRC-8 over a byte stream: polynomial x^8 + x^2 + x + 1, start value 0.
module crc8 (
    input  wire       clk,
    input  wire       clear,
    input  wire       enable,
    input  wire [7:0] data,
    output reg  [7:0] crc
);

    function [7:0] step;
        input [7:0] value;
        integer     i;
        begin
            step = value;
            for (i = 0; i < 8; i = i + 1)
                step = step[7] ? {step[6:0], 1'b0} ^ 8'h07 : {step[6:0], 1'b0};
        end
    endfunction

    always @(posedge clk)
        if (clear)
            crc <= 8'h00;
        else if (enable)
            crc <= step(crc ^ data);

endmodule

`default_nettype wire
