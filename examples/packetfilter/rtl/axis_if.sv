// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// A stream of words with a handshake and the end of a frame.
interface axis_if #(
    parameter int WIDTH = 32
);

    logic [WIDTH-1:0] data;
    logic             last;
    logic             mark;
    logic             valid;
    logic             ready;

    modport source (output data, last, mark, valid, input ready);
    modport sink (input data, last, mark, valid, output ready);
    modport monitor (input data, last, mark, valid, ready);

endinterface
