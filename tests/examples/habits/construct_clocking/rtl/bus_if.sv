// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// The interface of the hardware is that of the bench as well.
interface bus_if(input logic clk);
    logic       valid, ready;
    logic [1:0] data;
    clocking driver @(posedge clk);
        default input #1step output #2ns;
        output valid, data;
        input  ready;
    endclocking
    clocking monitor @(posedge clk);
        input valid, ready, data;
    endclocking
    modport hw(input valid, data, output ready);
    modport bench(clocking driver);
    modport watch(clocking monitor);
endinterface
