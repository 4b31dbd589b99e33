// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

interface stream_if #(parameter type T = logic [7:0]) (input logic clk);
    T     data;
    logic valid, ready;
    function automatic logic fires();
        return valid && ready;
    endfunction
    modport source(output data, valid, input ready, clk, import fires);
    modport sink(input data, valid, clk, output ready, import fires);
endinterface
