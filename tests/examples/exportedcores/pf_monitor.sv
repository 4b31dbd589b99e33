// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Prints the ports of the exported module beside the nets of packetfilter.tarn as written by hand: a
// line for each time at which one of them changes, with the same values in both halves.

/* verilator lint_off MULTITOP */
module pf_monitor;
    initial
        $monitor("seen %b %b %b %b %b %b %b %b | %b %b %b %b %b %b %b %b",
                 tarn_probes.core0.in0, tarn_probes.core0.in1, tarn_probes.core0.in2,
                 tarn_probes.core0.in3, tarn_probes.core0.in4, tarn_probes.core0.in5,
                 tarn_probes.core0.out0_synced, tarn_probes.core0.out1_synced,
                 {pf_tb.dut.lane[0].u_lane.header.kind, pf_tb.dut.lane[0].u_lane.header.port,
                  pf_tb.dut.lane[0].u_lane.header_valid},
                 {pf_tb.dut.lane[0].u_lane.verdict, pf_tb.dut.lane[0].u_lane.verdict_valid,
                  pf_tb.dut.lane[0].u_lane.runt},
                 {pf_tb.dut.lane[0].u_lane.events[0], pf_tb.dut.lane[0].u_lane.events[1]},
                 {pf_tb.dut.merged.data, pf_tb.dut.merged.last, pf_tb.dut.merged.valid,
                  pf_tb.dut.merged.ready},
                 {pf_tb.dut.u_arbiter.lane_valid, pf_tb.dut.u_arbiter.current,
                  pf_tb.dut.u_arbiter.busy},
                 {pf_tb.dut.lane_in[3].valid, pf_tb.dut.lane_in[3].ready,
                  pf_tb.dut.lane[2].u_lane.u_buffer.level},
                 pf_tb.dut.dbg_block,
                 {pf_tb.dut.lane[2].u_lane.dbg_force_verdict, pf_tb.dut.lane[2].u_lane.dbg_verdict});
endmodule
