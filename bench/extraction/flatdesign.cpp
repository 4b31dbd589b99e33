// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "flatdesign.h"

#include <array>
#include <random>

namespace {

const char Cells[] = R"(module cell_nand (input a, input b, output y);
  assign y = ~(a & b);
endmodule
module cell_xor (input a, input b, output y);
  assign y = a ^ b;
endmodule
module cell_mux (input a, input b, input s, output y);
  assign y = s ? b : a;
endmodule
module cell_dff (input c, input d, output reg y);
  always @(posedge c) y <= d;
endmodule
)";

struct Cell
{
    const char *name;
    const char *pins; ///< '@' stands for an input.
};

constexpr std::array<Cell, 4> Library = {{{"cell_nand", ".a(@), .b(@)"},
                                          {"cell_xor", ".a(@), .b(@)"},
                                          {"cell_mux", ".a(@), .b(@), .s(@)"},
                                          {"cell_dff", ".c(clk), .d(@)"}}};

QByteArray cellNet(int number)
{
    return "_" + QByteArray::number(number).rightJustified(6, '0') + "_";
}

QByteArray cellText(const Cell &cell, int number, int cells, std::mt19937 *random)
{
    QByteArray pins(cell.pins);
    for (int pin = pins.indexOf('@'); pin >= 0; pin = pins.indexOf('@'))
        pins.replace(pin, 1, cellNet(int((*random)() % unsigned(cells))));
    const QByteArray net = cellNet(number);
    return QByteArray("  ") + cell.name + " " + net + "cell (" + pins + ", .y(" + net + "));\n";
}

} // namespace

QByteArray FlatDesign::source() const
{
    std::mt19937 random(1);
    QByteArray text = QByteArray(Cells) + "module bench_top (input clk, input [31:0] in);\n";
    for (int i = 0; i < cells; ++i)
        text += "  wire " + cellNet(i) + ";\n";
    for (int i = 0; i < nets; ++i)
        text += "  wire net_" + QByteArray::number(i) + ";\n";
    for (int i = 0; i < cells; ++i)
        text += cellText(Library[std::size_t(i) % Library.size()], i, cells, &random);
    for (int i = 0; i < nets; i += 10)
        text += "  assign net_" + QByteArray::number(i) + " = in[" + QByteArray::number(i % 32) +
                "];\n";
    return text + "endmodule\n";
}
