// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`default_nettype none

// Follows a mechanical contact once it has been stable for eight ticks.
module debouncer (
    input  wire clk,
    input  wire rst_n,
    input  wire tick,
    input  wire contact,
    output reg  state
);

    reg [1:0] contact_sync;
    reg [2:0] stable;

    always @(posedge clk or negedge rst_n)
        if (!rst_n) begin
            contact_sync <= 2'b00;
            stable       <= 3'd0;
            state        <= 1'b0;
        end else begin
            contact_sync <= {contact_sync[0], contact};
            if (contact_sync[1] == state)
                stable <= 3'd0;
            else if (tick) begin
                stable <= stable + 3'd1;
                if (stable == 3'd7)
                    state <= contact_sync[1];
            end
        end

endmodule

`default_nettype wire
