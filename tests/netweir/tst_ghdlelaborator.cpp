// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "dialogwatch.h"
#include "temporaryfolder.h"
#include "toolscript.h"
#include "vhdlelaboration.h"

#include <support/testcase.h>

#include <QApplication>
#include <QProgressDialog>
#include <QTest>

using namespace NETWEIR::Internal;
using namespace TarnTest;

namespace {

const QByteArray Ieee = "library ieee; use ieee.std_logic_1164.all;\n";

const QByteArray Leaf = Ieee + "entity leaf is port (d : in std_logic; q : out std_logic); end;\n"
                               "architecture rtl of leaf is begin q <= d; end;\n";

const QByteArray TopOfLeaf = Ieee +
                             "entity top is port (d : in std_logic; q : out std_logic); end;\n"
                             "architecture rtl of top is begin\n"
                             "  u : entity work.leaf port map (d => d, q => q);\n"
                             "end;\n";

QVector<VhdlTestFile> oneFile(const QByteArray &text)
{
    return {{QStringLiteral("a.vhd"), text}};
}

} // namespace

class TestGhdlElaborator final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_temporary.verifyNothingIsLeft(); }

    void elaboratesFilesInAnyOrder();
    void readsDataFiles();
    void doesNotWaitForProcesses_data();
    void doesNotWaitForProcesses();
    void replacesUnknownComponents();
    void replacesUnknownEntities();
    void takesTheLastArchitecture();
    void startsWithAConfiguration();
    void prefersSourcesToLibraryFiles();
    void elaboratesRootsOfVerilog();
    void importsSourcesOnce();
    void refusesRootsThatDoNotFit_data();
    void refusesRootsThatDoNotFit();
    void reportsErrorsOfAllFiles_data();
    void reportsErrorsOfAllFiles();

    void survivesFaultsOfTheTool_data();
    void survivesFaultsOfTheTool();
    void saysWhatToInstall();
    void cancelStopsTheTool();
    void continuesAfterItsLimit();

private:
    const TemporaryFolder m_temporary;
};

void TestGhdlElaborator::elaboratesFilesInAnyOrder()
{
    VhdlElaboration design(
        {{QStringLiteral("top.vhd"), TopOfLeaf}, {QStringLiteral("-leaf ä, b.vhd"), Leaf}});
    QVERIFY2(design.elaborateTop(), qPrintable(design.messages().join(QLatin1Char('\n'))));
    QCOMPARE(design.messages(), QStringList());
}

void TestGhdlElaborator::readsDataFiles()
{
    const QByteArray top = "use std.textio.all;\n"
                           "entity top is end;\narchitecture rtl of top is\n"
                           "  impure function width return natural is\n"
                           "    file f : text open read_mode is \"data/width.txt\";\n"
                           "    variable l : line; variable n : natural;\n"
                           "  begin readline(f, l); read(l, n); return n; end;\n"
                           "  signal s : bit_vector(1 to width);\nbegin end;\n";
    VhdlElaboration design(
        {{QStringLiteral("top.vhd"), top}, {QStringLiteral("data/width.txt"), "3\n"}});
    QVERIFY2(design.elaborateTop(), qPrintable(design.messages().join(QLatin1Char('\n'))));
    QCOMPARE(design.netlist(), QStringLiteral("top : top\n    s[1:3] ...\n"));

    VhdlElaboration without(oneFile(top));
    QVERIFY(!without.elaborateTop());
    QCOMPARE(without.messages(),
             QStringList{QStringLiteral("ERROR: a.vhd:6: The design reads the file "
                                        "\"data/width.txt\", which cannot be opened. Put it into "
                                        "the folder of the source that reads it.")});
}

void TestGhdlElaborator::doesNotWaitForProcesses_data()
{
    QTest::addColumn<QByteArray>("process");

    QTest::newRow("endless") << QByteArray("process begin s <= '1'; end process;");
    QTest::newRow("endless changes") << QByteArray("process (s) begin s <= not s; end process;");
    QTest::newRow("assertion") << QByteArray(
        "process begin assert false severity failure; s <= '1'; wait; end process;");
    QTest::newRow("bounds") << QByteArray("process begin n <= 9; s <= '1'; wait; end process;");
}

void TestGhdlElaborator::doesNotWaitForProcesses()
{
    QFETCH(QByteArray, process);
    VhdlElaboration design(
        oneFile("entity top is end;\narchitecture rtl of top is signal s, t : bit; "
                "signal n : integer range 0 to 3; begin " +
                process + " end;\n"),
        QStringLiteral("08"), 20);
    QElapsedTimer timer;
    timer.start();
    QVERIFY2(design.elaborateTop(), qPrintable(design.messages().join(QLatin1Char('\n'))));
    QVERIFY2(timer.elapsed() < 10000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(design.netlist().startsWith(QLatin1String("top : top\n    s O\n    t .\n")));
}

void TestGhdlElaborator::replacesUnknownComponents()
{
    const QByteArray vendor = Ieee +
                              "package cells is\n"
                              "  component pad is generic (drive : integer := 4);\n"
                              "    port (i : in std_logic; o : out std_logic); end component;\n"
                              "end;\n";
    const QByteArray top =
        Ieee +
        "use work.cells.all;\n"
        "entity top is port (d : in std_logic_vector(3 downto 0); q : out std_logic); end;\n"
        "architecture rtl of top is\n"
        "  constant w : integer := 4;\n"
        "  component Filter is\n"
        "    generic (taps : natural := 2; name : string; mask : std_logic_vector := \"01ZU\";\n"
        "             fast : boolean; gain : real; edge : bit; u : std_logic);\n"
        "    port (d : in std_logic_vector(w - 1 downto 0);\n"
        "          q : out std_logic_vector(taps - 1 downto 0); b : inout std_logic);\n"
        "  end component;\n"
        "  signal p, free : std_logic; signal f : std_logic_vector(2 downto 0);\n"
        "begin\n"
        "  u1 : pad port map (i => d(0), o => p);\n"
        "  u2 : Filter generic map (3, \"a\"\"|b\", fast => true, gain => 0.5, edge => '1', u => "
        "'H')\n"
        "    port map (d => d, q => f, b => free);\n"
        "  u3 : component Filter generic map (1, \"\", \"1\", false, 1.0, '0', 'X')\n"
        "    port map (d => d, q => f(0 downto 0), b => open);\n"
        "end;\n";
    for (const char *standard : {"93", "08"}) {
        VhdlElaboration design(
            {{QStringLiteral("top.vhd"), top}, {QStringLiteral("v.vhd"), vendor}},
            QLatin1String(standard));
        design.addModule(QStringLiteral("filter"));
        QVERIFY2(design.elaborateTop(), qPrintable(design.messages().join(QLatin1Char('\n'))));
        QCOMPARE(design.netlist(),
                 QStringLiteral("top : top\n"
                                "    q .\n"
                                "    p O\n"
                                "    free O\n"
                                "    d[3:0] OOOO\n"
                                "    f[2:0] OOO\n"
                                "BORDER u2: Filter(edge=1, fast=true, gain=5.0e-1, mask=01zx, "
                                "name=a\"|b, taps=3, u=1, d:4, q:3, b:1)\n"
                                "BORDER u3: Filter(edge=0, fast=false, gain=1.0, mask=1, name=, "
                                "taps=1, u=x, d:4, q:1, b:1)\n"));
    }
}

void TestGhdlElaborator::replacesUnknownEntities()
{
    const QByteArray top =
        "library ieee, orion;\nuse ieee.std_logic_1164.all;\nuse ieee.numeric_std.all;\n"
        "use orion.cells.all;\n"
        "entity top is port (clk : in std_logic; q : out std_logic); end;\n"
        "architecture rtl of top is\n"
        "  type pair is record\n    a, b : std_logic;\n  end record;\n"
        "  signal p : pair; signal v : std_logic_vector(3 downto 0); signal u : unsigned(1 downto "
        "0);\n"
        "  signal n, m : natural range 0 to 3;\n"
        "begin\n"
        "  n <= 2;\n"
        "  direct : entity work.Filter\n    generic map (Taps => 3, Mode => \"fast\")\n"
        "    port map (clk, v(1 downto 0), open, p.b);\n"
        "  pll : ORION_PLL generic map (mult => 4) port map (c => clk, d => not v(3), q => q,\n"
        "    n => n, m => m, u => u, one => '1');\n"
        "end;\n";
    VhdlElaboration design(oneFile(top));
    DeclaredUnit filter;
    filter.name = QStringLiteral("Filter");
    filter.ports = {{QStringLiteral("Clk"), PortDirection::Input},
                    {QStringLiteral("D"), PortDirection::Input},
                    {QStringLiteral("E"), PortDirection::Input},
                    {QStringLiteral("Q"), PortDirection::Output}};
    design.addForeign(filter);
    QVERIFY2(design.elaborateTop(), qPrintable(design.messages().join(QLatin1Char('\n'))));
    QCOMPARE(design.netlist(),
             QStringLiteral("top : top\n"
                            "    clk O\n"
                            "    q O\n"
                            "    p.a .\n"
                            "    p.b O\n"
                            "    v[3:0] ....\n"
                            "    u[1:0] OO\n"
                            "    n[1:0] OO\n"
                            "    m[1:0] OO\n"
                            "BORDER direct: Filter(Mode=fast, Taps=3, clk:1, d:2, q:1)\n"));
}

void TestGhdlElaborator::takesTheLastArchitecture()
{
    const QByteArray first = "entity top is end;\n"
                             "architecture a of top is signal in_a : bit; begin end;\n";
    const QByteArray second = "architecture b of top is signal in_b : bit; begin end;\n";
    VhdlElaboration design({{QStringLiteral("1.vhd"), first}, {QStringLiteral("2.vhd"), second}});
    QVERIFY(design.elaborateTop());
    QCOMPARE(design.netlist(), QStringLiteral("top : top\n    in_b .\n"));
    VhdlElaboration reversed({{QStringLiteral("2.vhd"), second}, {QStringLiteral("1.vhd"), first}});
    QVERIFY(reversed.elaborateTop());
    QCOMPARE(reversed.netlist(), QStringLiteral("top : top\n    in_a .\n"));
}

void TestGhdlElaborator::startsWithAConfiguration()
{
    VhdlElaboration design(oneFile("configuration c of top is for a end for; end;\n"
                                   "entity top is end;\n"
                                   "architecture a of top is signal in_a : bit; begin end;\n"
                                   "architecture b of top is signal in_b : bit; begin end;\n"));
    QVERIFY2(design.elaborateTop(QStringLiteral("C")),
             qPrintable(design.messages().join(QLatin1Char('\n'))));
    QCOMPARE(design.netlist(), QStringLiteral("top : top\n    in_a .\n"));
}

void TestGhdlElaborator::prefersSourcesToLibraryFiles()
{
    VhdlElaboration design(
        {{QStringLiteral("top.vhd"), TopOfLeaf},
         {QStringLiteral("leaf.vhd"), Leaf},
         {QStringLiteral("cells.vhd"),
          Ieee + "entity leaf is port (x : in bit); end;\n"
                 "architecture other of leaf is signal wrong : bit; begin end;\n",
          QStringLiteral("work"), true}});
    QVERIFY2(design.elaborateTop(), qPrintable(design.messages().join(QLatin1Char('\n'))));
    QCOMPARE(design.netlist(), QStringLiteral("top : top\n    d O\n    q O\n"
                                              "    u : leaf\n        d O\n        q O\n"));
}

void TestGhdlElaborator::elaboratesRootsOfVerilog()
{
    const QByteArray types = "package sizes is subtype few is integer range 0 to 7; end;\n";
    const QByteArray unit =
        Ieee + "use work.sizes.all;\n"
               "entity Unit is\n"
               "  generic (W : positive := 2; Name : string := \"none\"; Mask : std_logic_vector "
               ":= \"10\";\n"
               "           Init : bit_vector(3 downto 0) := (others => '0'); Fast : boolean := "
               "false;\n"
               "           Gain : real := 1.0; Edge : std_logic := '0'; Step : few := 1);\n"
               "  port (d : in std_logic_vector(W - 1 downto 0); open_d : in std_logic_vector;\n"
               "        q : out std_logic_vector(Name'length - 1 downto 0); n : in few);\n"
               "end;\n"
               "architecture rtl of Unit is\n"
               "begin\n"
               "  m : for i in Mask'range generate signal at : std_logic; begin end generate;\n"
               "  init_is_5 : if Init = \"0101\" generate signal s : bit; begin end generate;\n"
               "  is_fast : if Fast generate signal s : bit; begin end generate;\n"
               "  is_half : if Gain = 0.5 generate signal s : bit; begin end generate;\n"
               "  is_high : if Edge = '1' generate signal s : bit; begin end generate;\n"
               "  is_3 : if Step = 3 generate signal s : bit; begin end generate;\n"
               "end;\n";
    PartRoot plain;
    plain.unit = QStringLiteral("unit");
    plain.ports = {{QStringLiteral("open_d"), PortDirection::Input, 3}};
    PartRoot full = plain;
    full.generics = {{QStringLiteral("W"), {GenericValue::Integer, QStringLiteral("4")}},
                     {QStringLiteral("Name"), {GenericValue::Text, QStringLiteral("a\"b")}},
                     {QStringLiteral("Mask"), {GenericValue::Bits, QStringLiteral("1xz")}},
                     {QStringLiteral("Init"), {GenericValue::Integer, QStringLiteral("5")}},
                     {QStringLiteral("Fast"), {GenericValue::Integer, QStringLiteral("1")}},
                     {QStringLiteral("Gain"), {GenericValue::Real, QStringLiteral("5e-1")}},
                     {QStringLiteral("Edge"), {GenericValue::Bits, QStringLiteral("1")}},
                     {QStringLiteral("Step"), {GenericValue::Bits, QStringLiteral("0011")}}};
    for (const char *library : {"work", "parts"}) {
        for (const char *standard : {"93", "08"}) {
            VhdlElaboration design({{QStringLiteral("u.vhd"), unit, QLatin1String(library)},
                                    {QStringLiteral("p.vhd"), types, QLatin1String(library)}},
                                   QLatin1String(standard));
            QVERIFY2(design.elaborate({plain, full}),
                     qPrintable(design.messages().join(QLatin1Char('\n'))));
            QCOMPARE(design.netlist(0), QStringLiteral("Unit : Unit\n"
                                                       "    m[0].at .\n"
                                                       "    m[1].at .\n"
                                                       "    d[1:0] ..\n"
                                                       "    open_d[2:0] ...\n"
                                                       "    q[3:0] ....\n"
                                                       "    n[2:0] ...\n"));
            QCOMPARE(design.netlist(1), QStringLiteral("Unit : Unit\n"
                                                       "    m[0].at .\n"
                                                       "    m[1].at .\n"
                                                       "    m[2].at .\n"
                                                       "    init_is_5.s .\n"
                                                       "    is_fast.s .\n"
                                                       "    is_half.s .\n"
                                                       "    is_high.s .\n"
                                                       "    is_3.s .\n"
                                                       "    d[3:0] ....\n"
                                                       "    open_d[2:0] ...\n"
                                                       "    q[2:0] ...\n"
                                                       "    n[2:0] ...\n"));
        }
    }
}

/// A later elaboration imports only its own wrappers.
void TestGhdlElaborator::importsSourcesOnce()
{
    const QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/log-XXXXXX"));
    const QString log = folder.filePath(QStringLiteral("imports"));
    const ToolScript tool("[ \"$1\" != -i ] || echo \"$@\" >> " + log.toLocal8Bit() + "\n" +
                              ToolScript::elaborateVhdl(),
                          "TARN_GHDL");
    VhdlElaboration design(oneFile(Leaf));
    PartRoot root;
    root.unit = QStringLiteral("leaf");
    QVERIFY(design.elaborate({root}));
    const QString first = design.netlist();
    QVERIFY(design.elaborate({root, root}));
    QCOMPARE(design.netlist(1), first);

    const QByteArrayList imports = readFile(log).trimmed().split('\n');
    QCOMPARE(imports.size(), 2);
    QVERIFY(imports[0].contains("source0.vhd"));
    QVERIFY(!imports[1].contains("source0.vhd"));
}

void TestGhdlElaborator::refusesRootsThatDoNotFit_data()
{
    QTest::addColumn<QByteArray>("interface");
    QTest::addColumn<QString>("generic");
    QTest::addColumn<QString>("port");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const QByteArray &interface, const char *generic,
                        const char *port, const char *expected) {
        QTest::newRow(name) << interface << QString::fromLatin1(generic)
                            << QString::fromLatin1(port) << QString::fromLatin1(expected);
    };
    row("generic", "port (p : in bit);", "X", "p",
        "ERROR: top.v:3:5: The entity \"u\" has no generic \"X\".");
    row("port", "port (p : in bit);", "", "X",
        "ERROR: top.v:3:5: The entity \"u\" has no port \"X\".");
    row("no value", "generic (W : integer); port (p : in bit);", "", "p",
        "ERROR: top.v:3:5: The entity \"u\" needs a value for its generic \"W\", which has no "
        "default.");
    row("enumeration", "generic (S : severity_level := note); port (p : in bit);", "S", "p",
        "ERROR: top.v:3:5: The value \"1\" cannot be given to the generic \"S\" of the entity "
        "\"u\", which has the type \"severity_level\".");
    row("type of a port", "port (p : in severity_level);", "", "p",
        "ERROR: top.v:3:5: The port \"p\" of the entity \"u\" has the type \"severity_level\" "
        "and cannot be connected in Verilog. Use a bit, a vector of bits or an integer.");
    row("no range", "port (p : in bit; q : in bit_vector);", "", "p",
        "ERROR: top.v:3:5: The port \"q\" of the entity \"u\" has no range of its own, and the "
        "instance does not tell its width. Connect a signal.");
}

void TestGhdlElaborator::refusesRootsThatDoNotFit()
{
    QFETCH(QByteArray, interface);
    QFETCH(QString, generic);
    QFETCH(QString, port);
    QFETCH(QString, expected);
    PartRoot root;
    root.unit = QStringLiteral("u");
    root.place = {QStringLiteral("top.v"), 3, 5};
    if (!generic.isEmpty())
        root.generics.insert(generic, {GenericValue::Integer, QStringLiteral("1")});
    root.ports = {{port, PortDirection::Input, 1}};
    VhdlElaboration design(
        oneFile("entity u is " + interface + " end;\narchitecture rtl of u is begin end;\n"));
    QVERIFY(!design.elaborate({root}));
    QCOMPARE(design.messages(), QStringList{expected});
}

void TestGhdlElaborator::reportsErrorsOfAllFiles_data()
{
    QTest::addColumn<QVector<VhdlTestFile>>("files");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("syntax error") << oneFile("entity top is port (a : in bit) end;\n"
                                             "architecture rtl of top is begin end;\n")
                                  << QStringList{QStringLiteral(
                                         "ERROR: a.vhd:1:32: missing \";\" at end of port clause")};
    QTest::newRow("entity without architecture in an instance")
        << oneFile("entity leaf is port (a: in bit); end;\n"
                   "entity top is end;\n"
                   "architecture rtl of top is signal s: bit; begin u: entity work.leaf port map "
                   "(a=> s); end;\n")
        << QStringList{QStringLiteral("ERROR: a.vhd:3:52: The entity \"leaf\" has no architecture. "
                                      "Add the file with its architecture.")};
    QTest::newRow("architecture without entity")
        << oneFile("architecture rtl of nope is begin end;\n"
                   "entity top is end;\n"
                   "architecture rtl of top is begin end;\n")
        << QStringList{QStringLiteral(
               "ERROR: a.vhd:1:21: \"nope\" is not declared. Add the file that declares it.")};
    QTest::newRow("missing architecture")
        << oneFile("entity leaf is port (a: in bit); end;\n"
                   "architecture rtl of leaf is begin end;\n"
                   "entity top is end;\n"
                   "architecture rtl of top is signal s: bit; begin u: entity work.leaf(fast) port "
                   "map (a=> s); end;\n")
        << QStringList{QStringLiteral(
               "ERROR: a.vhd:4:49: cannot find architecture \"fast\" of entity \"leaf\". Correct "
               "its name, or add the file with the architecture.")};
    QTest::newRow("unknown port") << oneFile("entity leaf is port (a: in bit); end;\n"
                                             "architecture rtl of leaf is begin end;\n"
                                             "entity top is end;\n"
                                             "architecture rtl of top is signal s: bit; begin u: "
                                             "entity work.leaf port map (nothing=> s); end;\n")
                                  << QStringList{QStringLiteral(
                                         "ERROR: a.vhd:4:79: no declaration for \"nothing\"")};
    QTest::newRow("lengths")
        << oneFile("entity leaf is port (a: in bit_vector(3 downto 0)); end;\n"
                   "architecture rtl of leaf is begin end;\n"
                   "entity top is end;\n"
                   "architecture rtl of top is signal s: bit_vector(2 downto 0); begin u: entity "
                   "work.leaf port map (a=> s); end;\n")
        << QStringList{
               QStringLiteral("ERROR: a.vhd:4:102: actual constraints don't match formal ones")};
    QTest::newRow("top without architecture")
        << oneFile("entity top is end;\n")
        << QStringList{QStringLiteral("ERROR: a.vhd:1:8: The entity \"top\" has no architecture. "
                                      "Add the file with its architecture.")};
    QTest::newRow("binding to a missing entity")
        << oneFile(
               "entity top is end;\n"
               "architecture rtl of top is component c is port (x: in bit); end component; signal "
               "s: bit; for all: c use entity work.missing; begin u: c port map (x=> s); end;\n")
        << QStringList{QStringLiteral("ERROR: a.vhd:2:118: unit \"missing\" not found in library "
                                      "\"work\". Add the file that declares it.")};

    QTest::newRow("bounds while elaborating")
        << oneFile("entity top is end;\n"
                   "architecture rtl of top is\n"
                   "  function f(n : integer) return natural is begin return n; end;\n"
                   "  signal s : bit_vector(f(-1) downto 0);\n"
                   "begin end;\n")
        << QStringList{QStringLiteral(
               "ERROR: a.vhd:3: A value or a width does not fit (bound check failure). Compare the "
               "widths of the ports and what is connected to them, and the values of the "
               "generics.")};
    QTest::newRow("recursion")
        << oneFile(
               "entity top is generic (n : integer := 0); end;\n"
               "architecture rtl of top is begin\n"
               "  g : if n >= 0 generate u : entity work.top generic map (n + 1); end generate;\n"
               "end;\n")
        << QStringList{
               QStringLiteral("ERROR: a.vhd:1:8: The instantiation may never end (top > top). End "
                              "it with a condition on a generic, in a generate statement.")};
    QTest::newRow("missing library")
        << oneFile("library orion;\nuse orion.types.all;\n"
                   "entity top is end;\narchitecture rtl of top is signal s : word; begin end;\n")
        << QStringList{
               QStringLiteral("ERROR: a.vhd:1:9: The library \"orion\" is missing, and something "
                              "other than its components and entities is used. ") +
                   libraryAdvice(QStringLiteral("orion")),
               QStringLiteral("1 more error(s) that follow from those above")};
    QTest::newRow("external name")
        << oneFile("entity leaf is end;\narchitecture rtl of leaf is signal x : bit; begin end;\n"
                   "entity top is end;\narchitecture rtl of top is signal s : bit; begin\n"
                   "  u : entity work.leaf;\n"
                   "  process begin s <= <<signal u.x : bit>>; wait; end process;\nend;\n")
        << QStringList{QStringLiteral(
               "ERROR: a.vhd:6:22: External names (\"<< ... >>\") are not supported. Hide the code "
               "from synthesis or connect the signal through ports.")};

    QTest::newRow("the user above the unit")
        << oneFile("entity top is end;\narchitecture rtl of top is signal s : bit; begin\n"
                   "  u : entity work.leaf port map (nothing => s);\nend;\n"
                   "entity leaf is port (a : in bit); end;\n"
                   "architecture rtl of leaf is begin end;\n")
        << QStringList{QStringLiteral("ERROR: a.vhd:3:34: no declaration for \"nothing\"")};
    QTest::newRow("all files")
        << QVector<VhdlTestFile>{{QStringLiteral("top.vhd"),
                                  "use work.types.all;\nentity top is end;\narchitecture rtl of "
                                  "top is\n"
                                  "  signal s : word;\nbegin\n  u : entity work.leaf;\n  x <= "
                                  "s;\nend;\n"},
                                 {QStringLiteral("leaf.vhd"), "entity leaf is end;\n"
                                                              "architecture rtl of leaf is\n"
                                                              "\tsignal s : wrod;\nbegin end;\n"},
                                 {QStringLiteral("empty.vhd"), "-- nothing\n"}}
        << QStringList{QStringLiteral("ERROR: leaf.vhd:3:13: no declaration for \"wrod\""),
                       QStringLiteral("ERROR: top.vhd:1:10: unit \"types\" not found in library "
                                      "\"work\". Add the file that declares it."),
                       QStringLiteral("2 more error(s) that follow from those above")};

    QTest::newRow("generic without a default")
        << oneFile("entity top is generic (\n  W : integer); end;\n"
                   "architecture rtl of top is begin end;\n")
        << QStringList{QStringLiteral("ERROR: a.vhd:2:3: The generic \"W\" of the top has no "
                                      "default. Give it one, or choose another top.")};
    QTest::newRow("port without a range")
        << oneFile("entity top is port (p : in bit_vector); end;\n"
                   "architecture rtl of top is begin end;\n")
        << QStringList{QStringLiteral(
               "ERROR: a.vhd:1:21: The entity \"top\" cannot be the top (port \"p\" is "
               "unconstrained and has no default value). Give the port a range or a default, or "
               "choose another top.")};
}

void TestGhdlElaborator::reportsErrorsOfAllFiles()
{
    QFETCH(QVector<VhdlTestFile>, files);
    QFETCH(QStringList, expected);
    VhdlElaboration design(files);
    QVERIFY(!design.elaborateTop());
    QCOMPARE(design.messages().join(QLatin1Char('\n')), expected.join(QLatin1Char('\n')));
}

void TestGhdlElaborator::survivesFaultsOfTheTool_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("expected");
    const QByteArray onRun = "case \"$1\" in -r) ";
    const QByteArray otherwise = ";; esac\n" + ToolScript::elaborateVhdl();

    QTest::newRow("crash") << QByteArray("kill -SEGV $$\n")
                           << "ERROR: Elaborating the design failed: the elaborator crashed.";
    QTest::newRow("crash of the run")
        << onRun + "kill -SEGV $$" + otherwise
        << "ERROR: Elaborating the design failed: the elaborator crashed.";
    QTest::newRow("no reason") << QByteArray("exit 3\n")
                               << "ERROR: Elaborating the design failed: the elaborator gave no "
                                  "reason (exit code 3).";
    QTest::newRow("hang") << QByteArray("sleep 100\n")
                          << "ERROR: Elaborating the design took longer than 2 seconds";
    QTest::newRow("hang of the run") << onRun + "sleep 100" + otherwise
                                     << "ERROR: Elaborating the design took longer than 2 seconds";
    QTest::newRow("no result") << onRun + "exit 0" + otherwise
                               << "ERROR: Elaborating the design failed: its result is not "
                                  "complete.";
    QTest::newRow("garbage") << onRun + "head -c 100000 /dev/urandom > signals.ghw; exit 0" +
                                    otherwise
                             << "ERROR: Elaborating the design failed: its result is not complete.";
    QTest::newRow("endless errors")
        << QByteArray("yes 'source0.vhd:1:1: bad' | head -c 100000000 >&2; sleep 100\n")
        << "ERROR: Elaborating the design took longer than 2 seconds";
    QTest::newRow("pipe") << onRun + "mkfifo signals.ghw; exit 0" + otherwise
                          << "ERROR: Elaborating the design failed: its result is not complete.";
}

void TestGhdlElaborator::survivesFaultsOfTheTool()
{
    QFETCH(QByteArray, script);
    QFETCH(QString, expected);
    const ToolScript tool(script, "TARN_GHDL");
    QElapsedTimer timer;
    timer.start();
    VhdlElaboration design(
        {{QStringLiteral("top.vhd"), TopOfLeaf}, {QStringLiteral("l.vhd"), Leaf}},
        QStringLiteral("08"), 2);
    QVERIFY(!design.elaborateTop());
    QString error;
    QVERIFY(!design.read(&error));
    QVERIFY2(design.messages().last().startsWith(expected),
             qPrintable(design.messages().join(QLatin1Char('\n'))));
    QVERIFY2(timer.elapsed() < 8000, qPrintable(QString::number(timer.elapsed())));
}

void TestGhdlElaborator::saysWhatToInstall()
{
    qputenv("TARN_GHDL", "/nowhere/ghdl");
    VhdlElaboration design(oneFile(Leaf));
    const bool isElaborated = design.elaborateTop(QStringLiteral("leaf"));
    qunsetenv("TARN_GHDL");
    QVERIFY(!isElaborated);
    QCOMPARE(design.messages(),
             QStringList{QStringLiteral("ERROR: The elaborator \"/nowhere/ghdl\" named by the "
                                        "environment variable TARN_GHDL is not a program. Correct "
                                        "or unset the variable.")});
}

void TestGhdlElaborator::cancelStopsTheTool()
{
    const ToolScript tool("sleep 100\n", "TARN_GHDL");
    VhdlElaboration design(oneFile(Leaf));
    QElapsedTimer timer;
    {
        const DialogWatch watch([&](QProgressDialog *dialog) {
            QVERIFY(!m_temporary.processes().isEmpty());
            timer.start();
            Q_EMIT dialog->canceled();
        });
        QVERIFY(!design.elaborateTop(QStringLiteral("leaf")));
    }
    QVERIFY2(timer.isValid() && timer.elapsed() < 1000,
             qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(design.messages(), QStringList{cancelError()});
}

void TestGhdlElaborator::continuesAfterItsLimit()
{
    const ToolScript tool("sleep 0.5\n" + ToolScript::elaborateVhdl(), "TARN_GHDL");
    VhdlElaboration design(oneFile(Leaf));
    design.elaborator().scan(design.progress());
    PartRoot root;
    root.unit = QStringLiteral("leaf");
    root.isTop = true;
    design.elaborator().begin({root}, design.progress());
    design.elaborator().elaborate(design.progress(), 10);
    QVERIFY(design.elaborator().isRunning());
    QVERIFY(!design.elaborator().isElaborated());
    design.elaborator().elaborate(design.progress(), -1);
    QVERIFY(design.elaborator().isElaborated());
}

TARN_TEST_MAIN(TestGhdlElaborator)

#include "tst_ghdlelaborator.moc"
