// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Plays with the debug cores beside the test bench, and records their ports.
`timescale 1ns / 1ps

module play;
    initial begin
        $dumpfile("hub.vcd");
        $dumpvars(0, tarn_probes);
        #40000 tarn_probes.core0.set(0, 1); // The LEDs get the value of port 1 ...
        #1000  tarn_probes.core0.show(3);
        #39000 tarn_probes.core0.set(1, 8'h20); // ... and now another one.
        #1000  $display("level %h", tarn_probes.core0.get(3) >> 11);
        #39000 $finish;
    end
endmodule
