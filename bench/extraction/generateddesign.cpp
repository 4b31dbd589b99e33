// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "generateddesign.h"

namespace {

QByteArray number(int value)
{
    return QByteArray::number(value);
}

/// A block with @p nets single nets, three of them ports, and one or two buses of 30 bits.
QByteArray block(int index, int nets)
{
    QByteArray text = "module block_" + number(index) +
                      "(input clk, input enable, output done, input [29:0] data_in);\n";
    QByteArray previous("enable");
    for (int net = 3; net < nets; ++net) {
        const QByteArray name = "state_" + number(net);
        if (net % 3 == 0) {
            text += "  reg " + name + ";\n  always @(posedge clk) " + name + " <= " + previous +
                    " ^ data_in[" + number((net + index) % 30) + "];\n";
        } else {
            text += "  wire " + name + " = " + previous + " & data_in[" +
                    number((net * 7 + index) % 30) + "];\n";
        }
        previous = name;
    }
    // Every fourth block has a second bus.
    if (index % 4 == 0) {
        text += "  reg [29:0] sum;\n  always @(posedge clk) if (enable) sum <= sum + data_in + " +
                number(index) + ";\n";
        previous += " ^ sum[3]";
    }
    return text + "  assign done = " + previous + ";\nendmodule\n";
}

QByteArray group(int index, const GeneratedDesign &design)
{
    QByteArray text = "module group_" + number(index) + "(input clk, input enable, output done);\n";
    text += "  reg [29:0] counter;\n  always @(posedge clk) counter <= counter + 1;\n";
    for (int i = 0; i < design.blocksPerGroup; ++i) {
        const QByteArray previous = i == 0 ? QByteArray("enable") : "done_" + number(i - 1);
        text += "  wire done_" + number(i) + ";\n  block_" +
                number((index * design.blocksPerGroup + i) % design.blockModules) + " block_inst_" +
                number(i) + "(.clk(clk), .enable(" + previous + "), .done(done_" + number(i) +
                "), .data_in(counter));\n";
    }
    return text + "  assign done = done_" + number(design.blocksPerGroup - 1) + ";\nendmodule\n";
}

} // namespace

QByteArray GeneratedDesign::source() const
{
    QByteArray text;
    for (int i = 0; i < blockModules; ++i)
        text += block(i, netsPerBlock);
    for (int i = 0; i < groupModules; ++i)
        text += group(i, *this);
    text += "module bench_top(input clk, output done);\n";
    for (int i = 0; i < groups; ++i) {
        text += "  wire done_" + number(i) + ";\n  group_" + number(i % groupModules) +
                " group_inst_" + number(i) + "(.clk(clk), .enable(1'b1), .done(done_" + number(i) +
                "));\n";
    }
    return text + "  assign done = done_0;\nendmodule\n";
}
