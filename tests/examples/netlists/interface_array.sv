// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// An array of interfaces, driven through modports of children and from the module itself.
interface pair_if;
    logic go;
    logic done;
    logic idle;
    modport worker (input go, output done);
endinterface

module worker(pair_if.worker port);
    assign port.done = port.go;
endmodule

module top(input logic start, output logic all);
    pair_if lanes [3] ();
    for (genvar n = 0; n < 2; n++) begin : work
        worker u(.port(lanes[n]));
        assign lanes[n].go = start;
    end
    assign lanes[2].idle = start;
    assign all = lanes[0].done & lanes[1].done;
endmodule
