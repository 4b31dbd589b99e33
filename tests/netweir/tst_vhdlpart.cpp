// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "netlisttext.h"

#include <netweir/internal/signals/vhdlpart.h>
#include <netweir/internal/vhdl/vhdlfacts.h>
#include <netweir/internal/vhdl/vhdlscan.h>
#include <netweir/netlistbuilder.h>

#include <support/files.h>
#include <support/testcase.h>

#include <QApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace NETWEIR;
using namespace NETWEIR::Internal;

namespace {

const char Libraries[] = "library ieee; use ieee.std_logic_1164.all; use ieee.numeric_std.all;\n";

/// An entity "top" with these declarations and statements.
QByteArray topWith(const QByteArray &declarations, const QByteArray &statements = {},
                   const QByteArray &ports = "clk : in std_logic")
{
    return Libraries + QByteArray("entity top is port (") + ports +
           ");\nend;\narchitecture rtl of top is\n" + declarations + "\nbegin\n" + statements +
           "\nend;\n";
}

QString bitText(const std::vector<bool> &bits)
{
    QString text;
    for (const bool bit : bits)
        text += QLatin1Char(bit ? '1' : '0');
    return text;
}

} // namespace

/// Elaborates each design with GHDL and reads what it shows.
class TestVhdlPart : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_folder.isValid()); }
    void namesNets_data();
    void namesNets();
    void takesLargeArraysForMemories();
    void marksDrivers_data();
    void marksDrivers();
    void buildsHierarchies();
    void marksWhatIsDrivenOutside();
    void tellsPortsOfRoots();
    void callsAtBorders();
    void tellsForeignRoots();
    void hidesUnknownUnits();
    void findsTheJtagPrimitive_data();
    void findsTheJtagPrimitive();
    void saysThatARootIsMissing();

private:
    void elaborate(const QByteArray &text, const QString &top = QStringLiteral("top"));
    void run(const QStringList &arguments);
    std::unique_ptr<VhdlPart> read(const VhdlPartInput &input);
    QString topText(const QByteArray &text);
    QString buildText(const VhdlPart &part, int root, const DrivenPorts &driven = {});

    QTemporaryDir m_folder;
    QVector<VhdlSource> m_sources;
    QString m_error;
    QStringList m_borders; ///< Of the last buildText().
};

void TestVhdlPart::run(const QStringList &arguments)
{
    QProcess process;
    process.setWorkingDirectory(m_folder.path());
    process.setStandardOutputFile(m_folder.filePath("stdout"));
    process.start("ghdl", arguments);
    QVERIFY2(process.waitForFinished(60000) && process.exitCode() == 0,
             qPrintable(arguments.first() + ": " + process.errorString() + '\n' +
                        process.readAllStandardError()));
}

void TestVhdlPart::elaborate(const QByteArray &text, const QString &top)
{
    QFile::remove(m_folder.filePath("work-obj08.cf"));
    TarnTest::writeFile(m_folder.filePath("design.vhd"), text);
    m_sources = {{"work", text, scanVhdl(text)}};
    run({"-i", "--std=08", "design.vhd"});
    run({"-m", "--std=08", "-frelaxed", top});
    run({"-r", "--std=08", "-frelaxed", top, "--stop-time=0ns", "--disp-signals-map",
         "--disp-signals-table", "--disp-tree=port", "--wave=wave", "--asserts=disable"});
}

std::unique_ptr<VhdlPart> TestVhdlPart::read(const VhdlPartInput &input)
{
    const VhdlFacts facts(m_sources);
    VhdlPartInput all = input;
    all.outputPath = m_folder.filePath("stdout");
    all.wavePath = m_folder.filePath("wave");
    all.facts = &facts;
    m_error.clear();
    return VhdlPart::read(all, &m_error);
}

QString TestVhdlPart::buildText(const VhdlPart &part, int root, const DrivenPorts &driven)
{
    NetlistBuilder builder(part.unitName(root));
    m_borders.clear();
    part.build(root, driven, builder.top(), &builder, [&](const BorderInstance &instance) {
        QStringList bits;
        for (auto port = instance.driven.begin(); port != instance.driven.end(); ++port)
            bits += port.key() + '=' + bitText(*port);
        m_borders += QString::number(instance.root) + ' ' + instance.parent->instName() + '/' +
                     instance.name + ": " + bits.join(' ');
        builder.addHierachy(instance.parent, instance.name, "border");
    });
    return TarnTest::netlistText(builder.top());
}

QString TestVhdlPart::topText(const QByteArray &text)
{
    elaborate(text);
    if (QTest::currentTestFailed())
        return {};
    VhdlPartInput input;
    input.roots = {{{}, true}};
    const auto part = read(input);
    return part ? buildText(*part, 0) : m_error;
}

void TestVhdlPart::namesNets_data()
{
    QTest::addColumn<QByteArray>("declarations");
    QTest::addColumn<QByteArray>("statements");
    QTest::addColumn<QString>("nets");
    const auto row = [](const char *name, const char *declarations, const char *nets,
                        const char *statements = "") {
        QTest::newRow(name) << QByteArray(declarations) << QByteArray(statements) << QString(nets);
    };
    row("single nets",
        "signal A, b : std_logic; signal C : std_ulogic; signal d : boolean; signal e : bit; "
        "signal f : X01;",
        "A . b . C . d . e . f .");
    row("vectors",
        "signal v : std_logic_vector(3 downto 0); signal f : std_ulogic_vector(0 to 3);"
        "signal u : unsigned(1 downto -1); signal o : bit_vector(5 to 5);"
        "type flags is array (1 to 2) of boolean; signal b : flags;",
        "v[3:0] .... f[0:3] .... u[1:-1] ... o[5:5] . b[1:2] ..");
    row("integers",
        "signal i : integer range 0 to 9; signal s : integer range -3 to 3; signal n : natural;"
        "type tiny is range 6 downto 0; signal t : tiny;",
        "i[3:0] .... s[2:0] ... n[30:0] ............................... t[2:0] ...");
    row("enumerations",
        "type Color is (Red, Green, Blue); type Pair is (One, Two); type Lone is (Single);"
        "signal c : Color; signal p : Pair; signal l : Lone; signal s : Color range Red to Green;",
        "c[1:0] .. p[0:0] . l[0:0] . s[1:0] ..");
    row("letters", "signal c : character; signal s : string(1 to 3);", "s X c[7:0] ........");
    row("no hardware",
        "signal r : real; signal t : time; type times is array (0 to 1) of time;"
        "signal a : times; type rec is record b : bit; r : real; end record; signal x : rec;",
        "r X t X a[0] X a[1] X x.b . x.r X");
    row("records",
        "type Inner is record Data : std_logic_vector(1 downto 0); Valid : bit; end record;"
        "type Outer is record First : Inner; Count : natural range 0 to 3; end record;"
        "signal Rec : Outer;",
        "Rec.First.Valid . Rec.First.Data[1:0] .. Rec.Count[1:0] ..");
    row("arrays",
        "type words is array (1 downto 0) of std_logic_vector(2 to 3); signal m : words;"
        "type nums is array (-1 to 0) of integer range 0 to 1; signal n : nums;"
        "type rec is record a : bit; w : words; end record; type recs is array (0 to 0) of rec;"
        "signal r : recs;",
        "r[0].a . m[1][2:3] .. m[0][2:3] .. n[-1][0:0] . n[0][0:0] . r[0].w[1][2:3] .. "
        "r[0].w[0][2:3] ..");
    row("dimensions",
        "type plane is array (0 to 1, 2 downto 1) of std_logic; signal p : plane;"
        "type nums is array (0 to 1, 1 to 1) of natural range 0 to 3; signal n : nums;",
        "p[0][2:1] .. p[1][2:1] .. n[0][1][1:0] .. n[1][1][1:0] ..");
    row("letters as indexes",
        "type color is (red, green, blue); type flags is array (color) of bit;"
        "type words is array (green to blue) of bit_vector(1 downto 0);"
        "type chars is array (character range 'a' to 'b') of bit;"
        "signal f : flags; signal w : words; signal c : chars;",
        "f[0:2] ... w[1][1:0] .. w[2][1:0] .. c[97:98] ..");
    row("null ranges",
        "signal v : std_logic_vector(-1 downto 0); type rec is record b : bit; n : bit_vector(1 to "
        "0); end record; signal r : rec; type recs is array (1 to 0) of rec; signal a : recs;",
        "v X r.b . r.n X a X");
    row("open types",
        "type words is array (natural range <>) of std_logic_vector;"
        "type rec is record v : std_logic_vector; b : bit; end record;"
        "signal w : words(0 to 1)(1 downto 0); signal r : rec(v(0 to 2));",
        "r.b . w[0][1:0] .. w[1][1:0] .. r.v[0:2] ...");
    row("memories",
        "type small is array (0 to 3) of std_logic_vector(1 downto 0);"
        "type large is array (0 to 4096) of integer range 0 to 0;"
        "type rec is record Data : small; other : small; end record;"
        "signal a, b : small; signal l : large; signal r : rec; signal v : bit_vector(0 to 4999);"
        "signal i : natural range 0 to 3;",
        "b X l X r.Data X a[0][1:0] .. a[1][1:0] .. a[2][1:0] .. a[3][1:0] .. r.other[0][1:0] .. "
        "r.other[1][1:0] .. r.other[2][1:0] .. r.other[3][1:0] .. v[0:4999] i[1:0] ..",
        "process (clk) begin assert a(1) = b(i) and r.data(i) = a(2) and v(i) = '0'; end process;");
    row("memories in elements",
        "type mem is array (0 to 1) of bit_vector(1 downto 0);"
        "type rec is record a, b : mem; end record; type recs is array (0 to 0) of rec;"
        "signal r, s : recs; signal i : natural range 0 to 1;",
        "r[0].a X s X r[0].b[0][1:0] .. r[0].b[1][1:0] .. i[0:0] .",
        "process (clk) begin assert r(0).a(i) = s(i).b(1); end process;");
    row("memories in arrays",
        "type mem is array (0 to 1) of bit_vector(1 downto 0);"
        "type mems is array (0 to 1) of mem; signal a, b, c : mems; signal i : natural range 0 to "
        "1;",
        "a X b X c[0][0][1:0] .. c[0][1][1:0] .. c[1][0][1:0] .. c[1][1][1:0] .. i[0:0] .",
        "process (clk) begin assert a(1)(i) = b(i)(0) and c(1)(0)(i) = '0'; end process;");
    row("scopes", "type loop_t is (x, Y);",
        "Gen[-1].s . Gen[0].s . gl[x].h[5].s . gl[y].h[5].s . gi.s . Blk.s . Blk.Deep.\\s\\ .",
        "Gen : for i in -1 to 0 generate signal s : bit; begin end generate;"
        "gl : for l in loop_t generate h : for i in 5 to 5 generate signal s : bit; begin end "
        "generate; end generate;"
        "gi : if true generate signal s : bit; begin end generate;"
        "none : for i in 1 to 0 generate signal s : bit; begin end generate;"
        "no : if false generate signal s : bit; begin end generate;"
        "Blk : block signal s : bit; begin Deep : block signal \\s\\ : bit; begin end block; end "
        "block;");
    row("extended identifiers",
        "signal \\a.b(3)\\ : bit; signal \\: 12 net: 3\\ : bit_vector(1 downto 0); signal \\clk\\ "
        ": bit;",
        "\\a.b(3)\\ . \\clk\\ . \\: 12 net: 3\\[1:0] ..");
    row("what is no net",
        "constant c : bit := '0'; shared variable v : integer; alias a : std_logic is clk;"
        "package p is signal s : bit; end package; signal real_one : bit;",
        "real_one .",
        "b : block (clk = '1') is begin end block;"
        "process begin wait until real_one'stable and clk'delayed(1 ns) = '1'; end process;");
}

void TestVhdlPart::namesNets()
{
    QFETCH(QByteArray, declarations);
    QFETCH(QByteArray, statements);
    QFETCH(QString, nets);
    QString text = topText(topWith(declarations, statements)).simplified();
    text.replace("v[0:4999] " + QString(5000, '.'), "v[0:4999]");
    QCOMPARE(text, "top : top clk O " + nets);
}

void TestVhdlPart::takesLargeArraysForMemories()
{
    const QString text = topText(topWith("type full is array (0 to 1) of bit_vector(1 to 2048);"
                                         "type over is array (0 to 1) of bit_vector(0 to 2048);"
                                         "signal f : full; signal o : over;"));
    QCOMPARE(text, "top : top\n    clk O\n    o X\n    f[0][1:2048] " + QString(2048, '.') +
                       "\n    f[1][1:2048] " + QString(2048, '.') + '\n');
}

void TestVhdlPart::marksDrivers_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("nets");
    const auto row = [](const char *name, const QByteArray &text, const char *nets) {
        QTest::newRow(name) << text << QString(nets);
    };
    row("processes",
        topWith(
            "signal v : std_logic_vector(3 downto 0); signal n : natural range 0 to 7; type r_t "
            "is record a, b : bit; end record; signal r : r_t;",
            "v(2 downto 1) <= \"00\"; n <= 3; r.b <= '1';"),
        "clk O r.a . r.b O v[3:0] .OO. n[2:0] OOO");
    row("ports of the top",
        topWith("", "b <= '1';",
                "a : in bit; b, c : out bit; d : inout bit; e : buffer bit; f : linkage bit"),
        "a O b O c . d O e . f O");
    const QByteArray leaf =
        Libraries + QByteArray("entity leaf is port (i : in std_logic; v : in "
                               "std_logic_vector(1 downto 0) := \"00\"; o : out "
                               "std_logic); end; architecture rtl of leaf is "
                               "begin o <= i; end;\n");
    const char *const Signals = "signal s, t : std_logic; signal w : std_logic_vector(1 downto 0);";
    row("signal", leaf + topWith(Signals, "u : entity work.leaf port map (s, w, t);"),
        "clk O s . t O w[1:0] .. u : leaf i . o O v[1:0] ..");
    row("driven signal",
        leaf + topWith(Signals, "u : entity work.leaf port map (clk, w, t); "
                                "w(0) <= t;"),
        "clk O s . t O w[1:0] .O u : leaf i O o O v[1:0] .O");
    row("constants", leaf + topWith(Signals, "u : entity work.leaf port map ('1', \"00\", open);"),
        "clk O s . t . w[1:0] .. u : leaf i O o O v[1:0] OO");
    row("signal of a package",
        "library ieee; use ieee.std_logic_1164.all; package p is signal s : std_logic; end;\n" +
            leaf + topWith(Signals, "u : entity work.leaf port map (work.p.s, w, t);"),
        "clk O s . t O w[1:0] .. u : leaf i . o O v[1:0] ..");
    row("signal of a package first",
        "package p is signal s : bit; end;\n"
        "entity e is port (i : in bit); end; architecture r of e is begin end;\n"
        "entity top is end; architecture rtl of top is begin "
        "u : entity work.e port map (work.p.s); end;",
        "u : e i .");
    row("open input", leaf + topWith(Signals, "u : entity work.leaf port map (s, open, t);"),
        "clk O s . t O w[1:0] .. u : leaf i . o O v[1:0] ..");
    row("block",
        topWith("signal s : std_logic;",
                "b : block is port (i, j, k : in std_logic; z : in std_logic := '0'; o : out "
                "std_logic); port map (i => s, j => '1', k => clk, o => s); begin end block;"),
        "clk O s . b.i . b.j O b.k O b.z . b.o .");
    row("expression",
        leaf + topWith(Signals, "u : entity work.leaf port map (not s, (s, t), o => t);"),
        "clk O s . t O w[1:0] .. u : leaf i O o O v[1:0] OO");
    row("conversion",
        leaf + topWith("signal s, t : std_logic; signal w : unsigned(1 downto 0);",
                       "u : entity work.leaf port map (to_x01(s), std_logic_vector(w), t);"),
        "clk O s . t O w[1:0] .. u : leaf i O o O v[1:0] OO");
    row("elements",
        leaf + topWith(Signals, "u : entity work.leaf port map (s, v(1) => t, v(0) => s, o => t);"),
        "clk O s . t O w[1:0] .. u : leaf i . o O v[1:0] O.");
}

void TestVhdlPart::marksDrivers()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, nets);
    QCOMPARE(topText(text).simplified(), "top : top " + nets);
}

void TestVhdlPart::buildsHierarchies()
{
    const QByteArray text = Libraries + QByteArray(R"(
entity Leaf_Cell is port (A : in std_logic := '0'); end;
architecture r of Leaf_Cell is signal Own : std_logic; begin end;
entity Middle is end;
architecture \R tl\ of Middle is begin
  G : for i in 0 to 1 generate
    U_Leaf : entity work.LEAF_CELL port map (open);
  end generate;
end;
entity \Ext.(n)\ is end;
architecture r of \Ext.(n)\ is begin end;
)") +
                            topWith("component leaf_cell is port (a : in std_logic); end component;"
                                    "component unbound is end component;",
                                    "First : entity work.middle;"
                                    "Blk : block signal s : bit; begin"
                                    "  \\u.2\\ : leaf_cell port map (clk);"
                                    "  Nobody : unbound;"
                                    "end block;"
                                    "Last : entity work.\\Ext.(n)\\;");
    QCOMPARE(topText(text), QString("top : top\n"
                                    "    clk O\n"
                                    "    Blk.s .\n"
                                    "    First : Middle\n"
                                    "        G[0].U_Leaf : Leaf_Cell\n"
                                    "            A .\n"
                                    "            Own .\n"
                                    "        G[1].U_Leaf : Leaf_Cell\n"
                                    "            A .\n"
                                    "            Own .\n"
                                    "    Blk.\\u.2\\ : Leaf_Cell\n"
                                    "        A O\n"
                                    "        Own .\n"
                                    "    Last : \\Ext.(n)\\\n"));
}

namespace {

/// A design of which the entity "unit" is a root, below a top that connects it to signals.
const char Wrapped[] = R"(
library ieee; use ieee.std_logic_1164.all;
entity sub is port (i : in std_logic; b : in bit_vector(1 downto 0); x : inout std_logic); end;
architecture r of sub is begin end;
library ieee; use ieee.std_logic_1164.all;
package p is type rec_t is record Num : natural range 0 to 7; D : std_logic_vector(0 to 1);
end record; end package;
library ieee; use ieee.std_logic_1164.all; use work.p.all;
entity Unit is port (Clk : in std_logic; Bits : in bit_vector(1 downto 0); Rec : in rec_t;
                     Q : out std_logic; IO : inout std_logic); end;
architecture r of Unit is signal x : std_logic; begin
  whole : entity work.sub port map (Clk, Bits, IO);
  parts : entity work.sub port map (Rec.D(0), b(1) => Bits(0), b(0) => Bits(1), x => x);
  Q <= Clk;
end;
library ieee; use ieee.std_logic_1164.all; use work.p.all;
entity wrapper is end;
architecture r of wrapper is
  signal clk, q, io, q2, io2 : std_logic; signal bits, b2 : bit_vector(1 downto 0);
  signal rec, r2 : rec_t; signal c2 : std_logic;
begin
  b : block begin
    u : entity work.unit port map (clk, bits, rec, q, io);
  end block;
  u : entity work.unit port map (c2, b2, r2, q2, io2);
end;
)";

VhdlPartInput wrappedInput()
{
    VhdlPartInput input;
    input.roots = {{{"b", "u"}, false}, {{"u"}, false}, {{"u", "whole"}, true}};
    return input;
}

} // namespace

void TestVhdlPart::marksWhatIsDrivenOutside()
{
    elaborate(Wrapped, "wrapper");
    const auto part = read(wrappedInput());
    QVERIFY2(part, qPrintable(m_error));
    const QString nothing = buildText(*part, 0);
    QCOMPARE(nothing.simplified(),
             QString("Unit : Unit Clk . Q O IO . x . Bits[1:0] .. Rec.Num[2:0] ... Rec.D[0:1] .. "
                     "whole : sub i . x . b[1:0] .. "
                     "parts : sub i . x . b[1:0] .."));
    DrivenPorts driven{{"Clk", {true}},
                       {"Bits", {false, true}},
                       {"Rec", {false, true, false, true, false}},
                       {"Q", {true}},
                       {"other", {true}}};
    QCOMPARE(buildText(*part, 0, driven).simplified(),
             QString("Unit : Unit Clk O Q O IO . x . Bits[1:0] .O Rec.Num[2:0] OOO Rec.D[0:1] O. "
                     "whole : sub i O x . b[1:0] .O "
                     "parts : sub i O x . b[1:0] O."));
    driven = {{"IO", {true}}, {"Bits", {true}}};
    QCOMPARE(buildText(*part, 1, driven).simplified(),
             QString("Unit : Unit Clk . Q O IO O x . Bits[1:0] O. Rec.Num[2:0] ... Rec.D[0:1] .. "
                     "whole : sub i . x O b[1:0] O. "
                     "parts : sub i . x . b[1:0] .O"));
    QCOMPARE(buildText(*part, 0), nothing);
    QCOMPARE(buildText(*part, 2).simplified(), QString("sub : sub i O x O b[1:0] OO"));
}

void TestVhdlPart::tellsPortsOfRoots()
{
    elaborate(Wrapped, "wrapper");
    const auto part = read(wrappedInput());
    QVERIFY2(part, qPrintable(m_error));
    QStringList ports;
    for (const PartPort &port : part->ports(1))
        ports += QStringLiteral("%1 %2 %3").arg(port.name).arg(int(port.direction)).arg(port.width);
    QCOMPARE(ports.join(", "), QString("Clk 1 1, Bits 1 2, Rec 1 5, Q 2 1, IO 3 1"));
    QCOMPARE(part->unitName(1), QString("Unit"));
    QCOMPARE(part->unitName(2), QString("sub"));
    QVERIFY(part->foreignRoots().empty());
    QVERIFY(!part->usesJtagPrimitive());
}

namespace {

/// Instances of an entity in place of a Verilog module, which reports its generics.
const char Borders[] = R"(
library ieee; use ieee.std_logic_1164.all;
entity vmod is generic (Width : integer := 4; Mode : string := "a|b");
port (clk : in std_logic; d : in std_logic_vector(Width - 1 downto 0); q : out std_logic;
      io : inout std_logic; n : in natural range 0 to 3); end;
architecture netweir_border of vmod is
  function told return boolean is begin
    report "netweir-generic:" & vmod'instance_name & "|Width|i|" & integer'image(Width);
    report "netweir-generic:" & vmod'instance_name & "|Mode|t|97,124,98";
    return true;
  end;
  signal netweir_told : boolean := told;
begin q <= q; io <= io; end;
library ieee; use ieee.std_logic_1164.all;
entity top is port (clk : in std_logic; pad : inout std_logic); end;
architecture rtl of top is
  signal a, b : std_logic_vector(3 downto 0); signal q1, q2, q3, t, t2 : std_logic;
  signal free : std_logic; signal k, none : natural range 0 to 3;
begin
  a(2) <= clk; k <= 2;
  G : for i in 0 to 1 generate
    U : entity work.vmod port map (clk, a, q1, t, k);
  end generate;
  V : entity work.vmod generic map (2) port map (q1, "00", q2, t2, 0);
  W : entity work.vmod port map (free, d(3) => a(2), d(2 downto 0) => b(2 downto 0), q => q3,
                                 io => pad, n => none);
end;
)";

} // namespace

void TestVhdlPart::callsAtBorders()
{
    elaborate(Borders);
    VhdlPartInput input;
    input.roots = {{{}, true}};
    const auto part = read(input);
    QVERIFY2(part, qPrintable(m_error));
    QCOMPARE(
        buildText(*part, 0),
        QString(
            "top : top\n"
            "    clk O\n    pad O\n    q1 O\n    q2 O\n    q3 O\n    t O\n    t2 O\n    free .\n"
            "    a[3:0] .O..\n    b[3:0] ....\n    k[1:0] OO\n    none[1:0] ..\n"
            "    G[0].U : border\n    G[1].U : border\n    V : border\n    W : border\n"));
    QCOMPARE(
        m_borders,
        (QStringList{"0 top/G[0].U: clk=1 d=0100 io=1 n=11", "0 top/G[1].U: clk=1 d=0100 io=1 n=11",
                     "1 top/V: clk=1 d=11 io=0 n=11", "0 top/W: clk=0 d=1000 io=1 n=00"}));
}

void TestVhdlPart::tellsForeignRoots()
{
    elaborate(Borders);
    VhdlPartInput input;
    input.roots = {{{}, true}};
    input.foreignUnits = {{"vmod", {"lib", "VMod", {"top.vhd", 3, 7}}}};
    const auto part = read(input);
    QVERIFY2(part, qPrintable(m_error));
    QCOMPARE(part->foreignRoots().size(), std::size_t(2));
    const PartRoot &root = part->foreignRoots().at(1);
    QCOMPARE(root.library, QString("lib"));
    QCOMPARE(root.unit, QString("VMod"));
    QCOMPARE(root.place.line, 3);
    QVERIFY(!root.isTop);
    QCOMPARE(root.generics.keys(), (QStringList{"Mode", "Width"}));
    QVERIFY((root.generics.value("Width") == GenericValue{GenericValue::Integer, "2"}));
    QVERIFY((root.generics.value("Mode") == GenericValue{GenericValue::Text, "a|b"}));
    const std::vector<PartPort> ports{{"clk", PortDirection::Input, 1},
                                      {"d", PortDirection::Input, 2},
                                      {"q", PortDirection::Output, 1},
                                      {"io", PortDirection::Inout, 1},
                                      {"n", PortDirection::Input, 2}};
    QVERIFY(root.ports == ports);
}

void TestVhdlPart::hidesUnknownUnits()
{
    QCOMPARE(topText(R"(
entity ip is port (i : in bit; o : out bit); end;
architecture netweir_stub of ip is signal hidden : bit; begin o <= o; end;
)" + topWith("signal s : bit;", "u : entity work.ip port map ('1', s);"))
                 .simplified(),
             QString("top : top clk O s O"));
}

void TestVhdlPart::findsTheJtagPrimitive_data()
{
    QTest::addColumn<QByteArray>("entity");
    QTest::addColumn<bool>("uses");
    QTest::newRow("exact") << QByteArray("KX_JTAG") << true;
    QTest::newRow("other case") << QByteArray("Kx_Jtag") << true;
    QTest::newRow("other name") << QByteArray("KX_JTAG2") << false;
}

void TestVhdlPart::findsTheJtagPrimitive()
{
    QFETCH(QByteArray, entity);
    QFETCH(bool, uses);
    elaborate("entity " + entity + " is end; architecture netweir_stub of " + entity +
              " is begin end;\n" + topWith("", "u : entity work." + entity + ';'));
    VhdlPartInput input;
    input.roots = {{{}, true}};
    const auto part = read(input);
    QVERIFY2(part, qPrintable(m_error));
    QCOMPARE(part->usesJtagPrimitive(), uses);
}

void TestVhdlPart::saysThatARootIsMissing()
{
    elaborate(topWith(""));
    VhdlPartInput input;
    input.roots = {{{"some", "thing"}, true}};
    QVERIFY(!read(input));
    QCOMPARE(m_error, QString("The elaborated design has no instance \"some/thing\"."));
}

TARN_TEST_MAIN(TestVhdlPart)
#include "tst_vhdlpart.moc"
