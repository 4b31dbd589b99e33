// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// A handshake with what its author wants to hold.
module top(input logic clk, input logic rst_n, input logic req, output logic ack, output logic busy);
    default clocking main @(posedge clk);
    endclocking
    default disable iff (!rst_n);

    sequence granted;
        ##[1:3] ack;
    endsequence
    property answered(start);
        @(posedge clk) disable iff (!rst_n) $rose(start) |-> granted;
    endproperty
    a_answered: assert property (answered(req)) else $error("no answer in %m");
    a_delay: assert property (@(posedge clk) req |-> ##2 ack or busy);
    a_stable: assume property (req && !ack |=> $stable(req));
    c_twice: cover property (@(posedge clk) req ##1 ack ##1 !ack [*2] ##1 ack);
    a_now: assert final (!(ack && busy));

    always_ff @(posedge clk or negedge rst_n) begin
        if (!rst_n) begin
            ack  <= 1'b0;
            busy <= 1'b0;
        end else begin
            ack  <= req & ~ack;
            busy <= req;
            assert (!$isunknown(req)) else $warning("req is not known");
        end
    end
endmodule
