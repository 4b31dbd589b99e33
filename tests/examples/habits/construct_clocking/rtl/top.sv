// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module top(input logic clk);
    bus_if bus(.clk(clk));
    target u_target(.bus(bus));
endmodule
module target(bus_if.hw bus);
    assign bus.ready = bus.valid;
endmodule
