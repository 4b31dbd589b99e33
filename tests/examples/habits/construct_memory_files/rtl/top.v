// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// A memory with its content in a file that is made later.
module top(input clk, input [3:0] addr, output reg [7:0] q);
    parameter FILE = "build/program.hex";
    reg [7:0] rom [0:15];
    integer fd;
    initial begin
        if (FILE != "") $readmemh(FILE, rom);
        fd = $fopen("log.txt", "w");
        $fwrite(fd, "%s\n", FILE);
    end
    always @(posedge clk) q <= rom[addr];
endmodule
