// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designfixture.h"
#include "netlisttext.h"

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using TarnTest::DesignFixture;

namespace {

const char VhdlHead[] = "library ieee; use ieee.std_logic_1164.all;\n";

/// A register of W bits in VHDL, "a.vhd", below whatever follows.
const char VhdlRegister[] = "entity Reg is generic (W : integer := 2);\n"
                            "port (Clk, En : in std_logic; D : in std_logic_vector(W-1 downto 0);\n"
                            "Q : out std_logic_vector(W-1 downto 0)); end;\n"
                            "architecture rtl of Reg is begin\n"
                            "process (Clk) begin if rising_edge(Clk) then if En = '1' then\n"
                            "Q <= D; end if; end if; end process; end;\n";

/// The same in Verilog.
const char VerilogRegister[] = "module Reg #(parameter W = 2) (input Clk, En, input [W-1:0] D,\n"
                               "output reg [W-1:0] Q);\n"
                               "always @(posedge Clk) if (En) Q <= D; endmodule\n";

/// Its component.
const char RegisterComponent[] =
    "component reg is generic (w : integer := 2);\n"
    "port (clk, en : in std_logic; d : in std_logic_vector(w-1 downto 0);\n"
    "q : out std_logic_vector(w-1 downto 0)); end component;\n";

/// A design of the files a.vhd and b.v; none where the text is empty.
class Design : public DesignFixture
{
public:
    Design(const QByteArray &vhdl, const QByteArray &verilog, const QString &top = QString())
    {
        if (!vhdl.isEmpty())
            add(QStringLiteral("a.vhd"), VhdlHead + vhdl);
        if (!verilog.isEmpty())
            add(QStringLiteral("b.v"), verilog);
        set(TE::DesignInfo::Top, top);
    }

    /// The netlist as text, otherwise the messages without the folder.
    QString read()
    {
        if (extract())
            return TarnTest::netlistText(netlist->top());
        return QStringList(messages + netMessages)
            .join(QLatin1Char('\n'))
            .remove(path(QString()) + QLatin1Char('/'));
    }
};

void addColumns()
{
    QTest::addColumn<QByteArray>("vhdl");
    QTest::addColumn<QByteArray>("verilog");
    QTest::addColumn<QString>("expected");
}

void row(const char *name, const QByteArray &vhdl, const QByteArray &verilog, const char *expected)
{
    QTest::newRow(name) << vhdl << verilog << QString::fromLatin1(expected);
}

} // namespace

/// Designs in VHDL and Verilog at once, from the sources to the netlist.
class TestMixedDesign : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void languagesNest_data();
    void languagesNest();
    void topsAreFoundOverBothLanguages_data();
    void topsAreFoundOverBothLanguages();
    void topMayBeChosenInAnyCase_data();
    void topMayBeChosenInAnyCase();
    void wrongConnectionsAreErrors_data();
    void wrongConnectionsAreErrors();
    void configurationsHaveThePortsOfTheirEntity();
    void severalDriversHaveThePlaceOfTheInstance();
    void otherWidthsInVerilogAreWarnings();
    void errorsOfBothLanguagesAreReported_data();
    void errorsOfBothLanguagesAreReported();
    void unusedSourcesAreChecked();
    void libraryFoldersServeVhdl();
    void endlessRecursionIsAnError_data();
    void endlessRecursionIsAnError();
    void jtagPrimitiveIsFoundBelowTheBorder_data();
    void jtagPrimitiveIsFoundBelowTheBorder();
    void nodesKnowTheirLanguage();
};

void TestMixedDesign::languagesNest_data()
{
    addColumns();
    row("VHDL below Verilog", VhdlRegister,
        "module top(input c, e, input [3:0] d, output [3:0] q); wire [3:0] n; wire [1:0] m, o;\n"
        "Reg #(.W(4)) u(.Clk(c), .En(e), .D(d), .Q(n)); Reg v(c, , m, o);\n"
        "assign q = n; endmodule\n",
        "top : top\n"
        "    c O\n"
        "    e O\n"
        "    d[3:0] OOOO\n"
        "    q[3:0] OOOO\n"
        "    n[3:0] OOOO\n"
        "    m[1:0] ..\n"
        "    o[1:0] OO\n"
        "    u : Reg\n"
        "        Clk O\n"
        "        En O\n"
        "        D[3:0] OOOO\n"
        "        Q[3:0] OOOO\n"
        "    v : Reg\n"
        "        Clk O\n"
        "        En .\n"
        "        D[1:0] ..\n"
        "        Q[1:0] OO\n");
    row("Verilog below VHDL",
        QByteArray("entity Top is port (c : in std_logic; q : out std_logic_vector(3 downto 0)); "
                   "end;\narchitecture rtl of Top is\n") +
            RegisterComponent +
            "signal n : std_logic_vector(3 downto 0); signal m, o : std_logic_vector(1 downto 0);\n"
            "signal f : std_logic; begin\n"
            "u : reg generic map (w => 4) port map (clk => c, en => '1', d => n, q => q);\n"
            "v : reg port map (c, f, m, o); m(1) <= c; end;\n",
        VerilogRegister,
        "Top : Top\n"
        "    c O\n"
        "    f .\n"
        "    q[3:0] OOOO\n"
        "    n[3:0] ....\n"
        "    m[1:0] O.\n"
        "    o[1:0] OO\n"
        "    u : Reg\n"
        "        Clk O\n"
        "        En O\n"
        "        D[3:0] ....\n"
        "        Q[3:0] OOOO\n"
        "    v : Reg\n"
        "        Clk O\n"
        "        En .\n"
        "        D[1:0] O.\n"
        "        Q[1:0] OO\n");
    row("Verilog between VHDL",
        "entity Top is port (c : in std_logic); end;\n"
        "architecture rtl of Top is component mid is generic (N : integer);\n"
        "port (c : in std_logic; a : in std_logic_vector(2 downto 0)); end component;\n"
        "signal s : std_logic_vector(2 downto 0); begin\n"
        "g : for i in 0 to 1 generate u : mid generic map (3) port map (c, s); end generate;\n"
        "s(0) <= c; end;\n"
        "library ieee; use ieee.std_logic_1164.all;\n"
        "entity Leaf is generic (W : integer); port (C : in std_logic;\n"
        "A : in std_logic_vector(W-1 downto 0); B : inout std_logic_vector(0 to 1)); end;\n"
        "architecture rtl of Leaf is signal x : std_logic; begin end;\n",
        "module mid #(parameter N = 1) (input c, input [N-1:0] a); wire [1:0] b; wire d;\n"
        "leaf #(.W(N)) l(.c(c), .a(a), .b(b)); leaf #(1) k(.C(d), .A(c)); endmodule\n",
        "Top : Top\n"
        "    c O\n"
        "    s[2:0] ..O\n"
        "    g[0].u : mid\n"
        "        c O\n"
        "        d .\n"
        "        a[2:0] ..O\n"
        "        b[1:0] OO\n"
        "        l : Leaf\n"
        "            C O\n"
        "            x .\n"
        "            A[2:0] ..O\n"
        "            B[0:1] OO\n"
        "        k : Leaf\n"
        "            C .\n"
        "            x .\n"
        "            A[0:0] O\n"
        "            B[0:1] ..\n"
        "    g[1].u : mid\n"
        "        c O\n"
        "        d .\n"
        "        a[2:0] ..O\n"
        "        b[1:0] OO\n"
        "        l : Leaf\n"
        "            C O\n"
        "            x .\n"
        "            A[2:0] ..O\n"
        "            B[0:1] OO\n"
        "        k : Leaf\n"
        "            C .\n"
        "            x .\n"
        "            A[0:0] O\n"
        "            B[0:1] ..\n");
    row("VHDL between Verilog",
        "entity Mid is generic (N : natural := 7); port (C : in std_logic; Z : out std_logic); "
        "end;\narchitecture rtl of Mid is component low is generic (P : natural);\n"
        "port (c : in std_logic; z : out std_logic); end component; begin\n"
        "l : low generic map (N + 1) port map (C, Z); end;\n",
        "module top(input c, output z); if (1) begin : g mid m(c, z); end endmodule\n"
        "module low #(parameter P = 0) (input c, output z); wire [P:0] p; end"
        "module\n",
        "top : top\n"
        "    c O\n"
        "    z O\n"
        "    g.m : Mid\n"
        "        C O\n"
        "        Z O\n"
        "        l : low\n"
        "            c O\n"
        "            z .\n"
        "            p[8:0] .........\n");
}

void TestMixedDesign::languagesNest()
{
    QFETCH(QByteArray, vhdl);
    QFETCH(QByteArray, verilog);
    QTEST(Design(vhdl, verilog).read(), "expected");
}

void TestMixedDesign::topsAreFoundOverBothLanguages_data()
{
    QTest::addColumn<QByteArray>("vhdl");
    QTest::addColumn<QByteArray>("verilog");
    QTest::addColumn<QString>("tops");
    QTest::addColumn<QString>("modules");
    const QByteArray entity("entity E is end; architecture a of E is begin end;\n");
    const auto add = [](const char *name, const QByteArray &vhdl, const char *verilog,
                        const char *tops, const char *modules) {
        QTest::newRow(name) << vhdl << QByteArray(verilog) << QString::fromLatin1(tops)
                            << QString::fromLatin1(modules);
    };
    add("VHDL alone", entity, "", "E", "E");
    add("entity below a module", entity, "module m; e u(); endmodule", "m", "E m");
    add("module below an entity",
        "entity E is end; architecture a of E is component m is end component; begin u : m; end;",
        "module M; endmodule", "E", "E M");
    add("both", entity, "module m; endmodule", "E m", "E m");
    add("in a circle",
        "entity E is end; architecture a of E is component m is end component; begin u : m; end;",
        "module M; E u(); endmodule", "", "E M");
}

void TestMixedDesign::topsAreFoundOverBothLanguages()
{
    QFETCH(QByteArray, vhdl);
    QFETCH(QByteArray, verilog);
    Design design(vhdl, verilog);
    design.findModules();
    QTEST(design.tops.join(QLatin1Char(' ')), "tops");
    QTEST(design.modules.join(QLatin1Char(' ')), "modules");
}

void TestMixedDesign::topMayBeChosenInAnyCase_data()
{
    QTest::addColumn<QString>("top");
    QTest::addColumn<QString>("expected");
    QTest::newRow("as declared") << "Top"
                                 << "Top : Top\n";
    QTest::newRow("other case") << "tOP"
                                << "tOP : tOP\n";
    QTest::newRow("module") << "other"
                            << "other : other\n";
    QTest::newRow("configuration") << "CFG"
                                   << "CFG : CFG\n";
}

/// The plug-in refuses a netlist whose top has another name than the one that the user chose.
void TestMixedDesign::topMayBeChosenInAnyCase()
{
    QFETCH(QString, top);
    Design design("entity Top is end; architecture a of Top is begin end;\n"
                  "configuration Cfg of Top is for a end for; end;\n",
                  "module other; endmodule\n", top);
    const QString text = design.read();
    QCOMPARE(design.tops, QStringList{top});
    QTEST(text, "expected");
}

void TestMixedDesign::wrongConnectionsAreErrors_data()
{
    addColumns();
    const auto below = [](const QByteArray &component) {
        return "entity top is end; architecture a of top is\ncomponent m is port (" + component +
               "); end component; begin\nu : m; end;\n";
    };
    const char *const module = "module m(input [3:0] d, output q); endmodule\n";
    row("width", below("d : in std_logic_vector(2 downto 0) := \"000\"; q : out std_logic"), module,
        "a.vhd:4:1: The port \"d\" of \"m\" has 4 bits, but 3 in its component.");
    row("direction",
        below("d : in std_logic_vector(3 downto 0) := \"0000\"; q : in std_logic := "
              "'0'"),
        module, "a.vhd:4:1: The port \"q\" of \"m\" is an output, but an input in its component.");
    row("name", below("e : in std_logic := '0'"), module, "a.vhd:4:1: \"m\" has no port \"e\".");
    const QByteArray entity(
        "entity e is generic (n : integer := 1); port (d : in std_logic); end;\n"
        "architecture a of e is begin end;\n");
    row("name in Verilog", entity, "module top; wire w;\ne u(.x(w)); endmodule\n",
        "b.v:2:6: Pin not found: 'x'");
    row("parameter in Verilog", entity, "module top; wire w;\ne #(.m(1)) u(.d(w)); endmodule\n",
        "b.v:2:6: Parameter pin not found: 'm'");
}

void TestMixedDesign::wrongConnectionsAreErrors()
{
    QFETCH(QByteArray, vhdl);
    QFETCH(QByteArray, verilog);
    QFETCH(QString, expected);
    const QString messages = Design(vhdl, verilog).read();
    QVERIFY2(messages.contains("ERROR: " + expected), qPrintable(messages));
}

void TestMixedDesign::configurationsHaveThePortsOfTheirEntity()
{
    Design design("entity e is generic (w : integer := 1); port (a : in bit); end;\n"
                  "architecture one of e is signal s : bit_vector(1 to w); begin end;\n"
                  "architecture two of e is begin end;\n"
                  "configuration cfg of e is for one end for; end;\n",
                  "module top(input x, y); cfg u(x); Cfg #(.W(3)) v(.A(y)); endmodule\n");
    QCOMPARE(design.read(), QStringLiteral("top : top\n    x O\n    y O\n"
                                           "    u : e\n        a O\n        s[1:1] .\n"
                                           "    v : e\n        a O\n        s[1:3] ...\n"));
}

void TestMixedDesign::severalDriversHaveThePlaceOfTheInstance()
{
    Design design("entity e is port (y : out bit); end;\n"
                  "architecture rtl of e is begin y <= '0'; y <= '1'; end;\n",
                  "module top(output y);\n  e u(y);\nendmodule\n");
    QVERIFY2(design.read().startsWith(
                 QLatin1String("ERROR: b.v:2:5: The signal \"y\" has several drivers")),
             qPrintable(design.read()));
}

/// Verilog pads and cuts.
void TestMixedDesign::otherWidthsInVerilogAreWarnings()
{
    Design design("entity e is port (a, b : in std_logic_vector(2 downto 0); q : out "
                  "std_logic_vector(2 downto 0)); end;\narchitecture r of e is begin end;\n",
                  "module top(input c); wire [1:0] x; wire [3:0] y; wire [1:0] z;\n"
                  "assign y[3] = c, y[0] = c; e u(.a(x), .b(y), .q(z)); endmodule\n");
    QCOMPARE(design.read(), QStringLiteral("top : top\n"
                                           "    c O\n"
                                           "    x[1:0] ..\n"
                                           "    y[3:0] O..O\n"
                                           "    z[1:0] OO\n"
                                           "    u : e\n"
                                           "        a[2:0] O..\n"
                                           "        b[2:0] ..O\n"
                                           "        q[2:0] ...\n"));
    QStringList warnings = design.messages + design.netMessages;
    warnings.replaceInStrings(design.path(QString()) + QLatin1Char('/'), QString());
    for (const char *words :
         {"\"a\" of \"e\" has 3 bits, but 2", "\"b\" of \"e\" has 3 bits, but 4",
          "\"q\" of \"e\" has 3 bits, but 2"}) {
        const QStringList found = warnings.filter(QLatin1String(words));
        QCOMPARE(found.size(), 1);
        QVERIFY2(found.first().startsWith(QLatin1String("WARNING: b.v:2:")),
                 qPrintable(found.first()));
    }
}

void TestMixedDesign::errorsOfBothLanguagesAreReported_data()
{
    QTest::addColumn<QByteArray>("verilog");
    QTest::addColumn<QString>("top");
    QTest::newRow("Verilog on top") << QByteArray("module m; e u(); wire w = ; endmodule\n") << "m";
    QTest::newRow("VHDL on top") << QByteArray("module m; wire w = ; endmodule\n") << "e";
    QTest::newRow("no module") << QByteArray("This is a letter.\n") << "e";
}

void TestMixedDesign::errorsOfBothLanguagesAreReported()
{
    QFETCH(QByteArray, verilog);
    QFETCH(QString, top);
    Design design("entity e is end;\narchitecture a of e is begin x <= ; end;\n", verilog, top);
    const QString messages = design.read();
    QVERIFY2(messages.contains(QLatin1String("ERROR: a.vhd:3:")), qPrintable(messages));
    QVERIFY2(messages.contains(QLatin1String("ERROR: b.v:1:")), qPrintable(messages));
}

/// A file that no tool can read is not skipped because nothing needs it.
void TestMixedDesign::unusedSourcesAreChecked()
{
    Design design("entity e is end; architecture a of e is begin end;\n", "This is a letter.\n");
    const QString messages = design.read();
    QVERIFY2(messages.contains(QLatin1String("ERROR: b.v:1:")), qPrintable(messages));
    QVERIFY(!design.netlist);
}

/// Also without any Verilog file in the project.
void TestMixedDesign::libraryFoldersServeVhdl()
{
    Design design("entity e is end; architecture a of e is component m is end component;\n"
                  "begin u : m; end;\n",
                  {});
    TarnTest::writeFile(design.path(QStringLiteral("m.v")), "module m; n u(); endmodule\n");
    TarnTest::writeFile(design.path(QStringLiteral("n.v")), "module n; wire w; endmodule\n");
    design.set(TE::DesignInfo::LibraryFolders, QStringList{design.path(QString())});
    design.set(TE::DesignInfo::LibraryExtensions, QStringList{".v"});
    QCOMPARE(design.read(), QStringLiteral("e : e\n"
                                           "    u : m\n"
                                           "        u : n\n"
                                           "            w .\n"));
}

void TestMixedDesign::endlessRecursionIsAnError_data()
{
    QTest::addColumn<QByteArray>("generic");
    QTest::addColumn<QString>("expected");
    QTest::newRow("equal") << QByteArray("n") << "The instantiation never ends (m -> e -> m).";
    QTest::newRow("changing") << QByteArray("n + 1") << "may never end";
}

void TestMixedDesign::endlessRecursionIsAnError()
{
    QFETCH(QByteArray, generic);
    QFETCH(QString, expected);
    Design design(
        "entity e is generic (n : integer := 3); end;\narchitecture a of e is\n"
        "component m is generic (n : integer); end component; begin\n"
        "g : if n > 0 generate u : m generic map (" +
            generic + "); end generate; end;\n",
        "module m #(parameter n = 1) (); if (n > 0) begin : g e #(n) u(); end endmodule\n",
        QStringLiteral("e"));
    const QString messages = design.read();
    QVERIFY2(messages.contains(expected), qPrintable(messages));
    QVERIFY(!design.netlist);
}

void TestMixedDesign::jtagPrimitiveIsFoundBelowTheBorder_data()
{
    QTest::addColumn<QByteArray>("vhdl");
    QTest::addColumn<QByteArray>("verilog");
    QTest::addColumn<bool>("expected");
    const QByteArray component("component kx_jtag is port (tck : out std_logic); end component;\n");
    QTest::newRow("in Verilog")
        << QByteArray("entity top is end; architecture a of top is component m is end component;\n"
                      "begin u : m; end;\n")
        << QByteArray("module m; wire t; KX_JTAG j(.TCK(t)); endmodule\n") << true;
    QTest::newRow("in VHDL") << "entity e is end; architecture a of e is signal t : std_logic;\n" +
                                    component + "begin j : kx_jtag port map (t); end;\n"
                             << QByteArray("module top; e u(); endmodule\n") << true;
    QTest::newRow("nowhere") << QByteArray("entity e is end; architecture a of e is begin end;\n")
                             << QByteArray("module top; e u(); endmodule\n") << false;
}

void TestMixedDesign::jtagPrimitiveIsFoundBelowTheBorder()
{
    QFETCH(QByteArray, vhdl);
    QFETCH(QByteArray, verilog);
    Design design(vhdl, verilog);
    QVERIFY2(design.extract(),
             qPrintable(design.messages.join('\n') + design.netMessages.join('\n')));
    QTEST(design.netlist->usesJtagPrimitive(), "expected");
}

/// Verilog, VHDL below it, with an instance, and Verilog again, with an instance below an escaped
/// name.
void TestMixedDesign::nodesKnowTheirLanguage()
{
    Design design("entity inner is end; architecture a of inner is begin end;\n"
                  "library work; entity e is end; architecture a of e is\n"
                  "component low is end component;\n"
                  "begin i : entity work.inner; v : low; end;\n",
                  "module top; e \\u.1 (); sub s(); endmodule module sub; endmodule\n"
                  "module low; sub s(); endmodule\n");
    QVERIFY2(design.extract(),
             qPrintable(design.messages.join('\n') + design.netMessages.join('\n')));
    QStringList lines;
    QList<NETWEIR::Hierachy *> nodes{design.netlist->top()};
    while (!nodes.isEmpty()) {
        const NETWEIR::Hierachy *node = nodes.takeFirst();
        const QVector<NETWEIR::NameStep> steps = design.netlist->nameStepsOf(node);
        lines.append(QStringLiteral("%1 %2 %3")
                         .arg(node->instName(), node->isVhdl() ? "VHDL" : "Verilog")
                         .arg(steps.size()));
        nodes = node->children() + nodes;
    }
    QCOMPARE(lines.join(", "), QStringLiteral("top Verilog 1, u.1 VHDL 1, i VHDL 1, v Verilog 1, "
                                              "s Verilog 1, s Verilog 1"));
}

TARN_TEST_MAIN(TestMixedDesign)
#include "tst_mixeddesign.moc"
