// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "wavenames.h"

#include <netweir/netlistbuilder.h>
#include <netweir/rtlnetlist.h>
#include <support/files.h>
#include <support/testcase.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

using namespace TarnTest;
using NETWEIR::NetMarks;

namespace {

/// The names, one line each; widths of buses without a range follow a star.
QString text(const WaveNames &names)
{
    QStringList lines = names.nets.values();
    for (auto bus = names.widths.cbegin(); bus != names.widths.cend(); ++bus)
        lines.append(QString("%1 *%2").arg(bus.key()).arg(bus.value()));
    lines.sort();
    return lines.join('\n');
}

const char vhdlDesign[] = R"(
library ieee;
use ieee.std_logic_1164.all;

entity child is
    generic (COUNT : natural := 2);
    port (I : in bit; Level : out natural range 0 to COUNT);
end entity;

architecture rtl of child is
    signal Active : boolean;
begin
    Inner : block
        signal Word : bit_vector(0 to COUNT);
    begin
    end block;
end architecture;

library ieee;
use ieee.std_logic_1164.all;

entity top is
end entity;

architecture rtl of top is
    type letters_t is (red, green, blue);
    type rows_t is array (natural range <>) of std_logic_vector;
    type grid_t is array (1 downto 0, letters_t) of integer range -3 to 4;
    type item_t is record
        Flag  : std_logic;
        Open1 : std_logic_vector;
        Ratio : real;
    end record;
    signal Colour : letters_t;
    signal Rows   : rows_t(0 to 1)(4 downto 2);
    signal Grid   : grid_t;
    signal Item   : item_t(Open1(3 downto 0));
    signal Text   : string(1 to 9);
    signal I      : bit;
begin
    G : for N in 0 to 1 generate
        signal S : std_logic;
    begin
        u : entity work.child generic map (4) port map (I, open);
    end generate;
end architecture;
)";

const char vhdlNames[] = R"(colour[1:0]
g[0].s
g[0].u/active
g[0].u/i
g[0].u/inner.word[0:4]
g[0].u/level[2:0]
g[1].s
g[1].u/active
g[1].u/i
g[1].u/inner.word[0:4]
g[1].u/level[2:0]
grid[0][0][3:0]
grid[0][1][3:0]
grid[0][2][3:0]
grid[1][0][3:0]
grid[1][1][3:0]
grid[1][2][3:0]
i
item.flag
item.open1[3:0]
item.ratio
rows[0] *3
rows[1] *3
text)";

} // namespace

/// The names that simulators show, and how they are compared with a netlist.
class TestWaveNames : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void namesOfVhdl();
    void namesOfVerilog();
    void failuresAreReported();
    void differencesAreShown();
    void opaqueNetsStandForTheirParts();
    void foreignInstancesAreLeftOut();
};

void TestWaveNames::namesOfVhdl()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("design.vhd");
    writeFile(file, vhdlDesign);
    QString error;
    const WaveNames names = vhdlWaveNames({{"work", {file}}}, "top", {}, &error);
    QCOMPARE(error, QString());
    QCOMPARE(text(names), QString(vhdlNames));
    QVERIFY(names.foldsCase);
}

void TestWaveNames::namesOfVerilog()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("design.v");
    writeFile(file, "module top #(parameter W = 2) (input Clk);\n"
                    "    wire [0:W] bus = {4{Clk}};\n    integer n = bus;\n"
                    "    genvar i;\n"
                    "    generate for (i = 0; i < 2; i = i + 1) begin : g\n"
                    "        reg on = 0;\n        child u (on);\n    end endgenerate\nendmodule\n"
                    "module child (input a);\nendmodule\n");
    QString error;
    const WaveNames names = verilogWaveNames({file, "-Ptop.W=3"}, "top", &error);
    QCOMPARE(error, QString());
    QCOMPARE(text(names), QString("Clk\nbus[0:3]\ng[0].on\ng[0].u/a\ng[1].on\ng[1].u/a\nn[31:0]"));
    QVERIFY(!names.foldsCase);
}

void TestWaveNames::failuresAreReported()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("design.vhd");
    QString error;
    writeFile(file, "entity top is\n    nothing\nend entity;\n");
    QCOMPARE(text(vhdlWaveNames({{"work", {file}}}, "top", {}, &error)), QString());
    QVERIFY2(error.contains("nothing"), qPrintable(error));

    // ghwdump tells types by their names only.
    error.clear();
    writeFile(file, "entity top is\nend entity;\narchitecture rtl of top is\nbegin\n"
                    "    a : block\n        type t is (x, y);\n        signal s : t;\n"
                    "    begin\n    end block;\n"
                    "    b : block\n        type t is (x, y, z);\n        signal s : t;\n"
                    "    begin\n    end block;\nend architecture;\n");
    QCOMPARE(text(vhdlWaveNames({{"work", {file}}}, "top", {}, &error)), QString());
    QVERIFY2(error.contains("two types"), qPrintable(error));

    error.clear();
    QCOMPARE(text(verilogWaveNames({folder.filePath("none.v")}, "top", &error)), QString());
    QVERIFY2(error.contains("none.v"), qPrintable(error));
}

void TestWaveNames::differencesAreShown()
{
    NETWEIR::NetlistBuilder builder("top");
    builder.addNet(builder.top(), "Clk");
    builder.addNet(builder.top(), "made_up");
    builder.addBus(builder.top(), "word", 3, 0);
    builder.addBus(builder.top(), "wide", 4, 1);
    builder.addBus(builder.top(), "narrow", 1, 0);
    builder.addNet(builder.addHierachy(builder.top(), "U", "child"), "A");
    const auto netlist = builder.take();

    WaveNames wave;
    wave.nets = {"clk", "word[0:3]", "u/a", "u/b"};
    wave.widths = {{"wide", 4}, {"narrow", 3}};
    wave.foldsCase = true;
    QCOMPARE(waveDifferences(netlist->top(), wave, {}),
             QString("only in the netlist: made_up\nonly in the netlist: narrow[1:0]\n"
                     "only in the netlist: word[3:0]\n"
                     "only in the wave: narrow\nonly in the wave: u/b\n"
                     "only in the wave: word[0:3]"));
    wave.foldsCase = false;
    QVERIFY(waveDifferences(netlist->top(), wave, {}).contains("only in the netlist: Clk"));
}

void TestWaveNames::opaqueNetsStandForTheirParts()
{
    const NetMarks both{true, true};
    NETWEIR::NetlistBuilder builder("top");
    builder.addNet(builder.top(), "memory", both);
    builder.addNet(builder.top(), "none", both);
    const auto netlist = builder.take();

    WaveNames wave;
    wave.nets = {"memory[0][7:0]", "memory[1][7:0]", "memory2"};
    QCOMPARE(waveDifferences(netlist->top(), wave, {}),
             QString("only in the netlist: none\nonly in the wave: memory2"));
}

void TestWaveNames::foreignInstancesAreLeftOut()
{
    NETWEIR::NetlistBuilder builder("top");
    builder.addNet(builder.top(), "a");
    builder.addNet(builder.addHierachy(builder.top(), "u", "foreign"), "inside");
    const auto netlist = builder.take();

    WaveNames wave;
    wave.nets = {"a", "u/of_the_model", "u2/b"};
    QCOMPARE(waveDifferences(netlist->top(), wave, {"foreign"}), QString("only in the wave: u2/b"));
    QCOMPARE(waveDifferences(netlist->top(), {{"a"}, {}, false}, {}),
             QString("only in the netlist: u/inside"));
}

TARN_TEST_MAIN(TestWaveNames)
#include "tst_wavenames.moc"
