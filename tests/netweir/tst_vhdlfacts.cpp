// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/vhdl/vhdlfacts.h>
#include <netweir/internal/vhdl/vhdlscan.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;

namespace {

const char Packages[] = R"(
package Types is
  type Inner_T is record Data, Valid : bit; end record;
  type Inner_Array is array (natural range <>) of Inner_T;
  type Rec_T is record Head : bit; Body_Part : Inner_Array(0 to 3); Next_Part : work.Types.Inner_T;
  end record;
  subtype Sub_T is Rec_T;
  component Comp is port (A, B : in bit; Q : out bit); end component;
end package;
package Other is
  type Rec_T is record HEAD : bit; Only_Here : bit; end record;
  type Round_T is array (0 to 1) of Trip_T;
  type Trip_T is array (0 to 1) of Round_T;
end package;
)";

const char Design[] = R"(
use work.Types.all;
entity Top is
  generic (Width : integer := 8);
  port (Clk, RST : in bit; Data_In : in Rec_T; \Ex T\ : out bit);
  signal Of_Entity : bit;
end;
architecture RTL of Top is
  type Local_T is record Here : bit; DATA : bit; end record;
  signal Plain, \Mixed Case\ : bit;
  signal Recs : Inner_Array(0 to 1);
  signal Loc : Local_T;
  signal Elsewhere : work.Other.rec_t;
  signal Round : Round_T;
  signal Res : (resolved) Sub_T;
  signal Mem : words;
  component Local_Comp is port (X : in bit; Y : out bit); end component;
  component Bound is port (I1, I2 : in bit; O1 : out bit); end component;
  for B_One, B_Two : Bound use entity work.Leaf port map (CLK => I2, RST => '1', Q => O1);
  for others : Bound use entity work.Leaf port map (CLK => I1, RST => open);
begin
  B_One : Bound port map (Clk, open, Plain);
  B_Two : Bound port map (I2 => Clk);
  B_Three : Bound port map (I1 => Clk);
  B_Four : Bound port map (I2 => Clk);
  U_One : entity work.Leaf(rtl) port map (Clk, open, Q => Plain, Part(3) => '1', to_bit(Conv) => RST, Off => open);
  U_Two : Comp port map (Clk, open, Plain);
  U_Three : Local_Comp port map (Y => Plain);
  U_Four : Local_Comp port map (Clk);
  U_Five : Unknown port map (Clk);
  U_Six : entity Lib2.Leaf port map (Clk);
  Gen : for I in 0 to 3 generate
    signal In_Gen : bit;
  begin
    U : entity work.Leaf port map (In_Gen);
    Blk : block is port (P : in Inner_T; P2, P3, P4 : in bit); port map (In_Gen, open, P4 => '1'); signal Deep : bit; begin end block;
  end generate;
  Alt : if Width = 1 generate
    signal First : bit;
  elsif Width = 2 generate
    signal Second : bit;
  begin
    X : if true generate signal Third : words; begin Plain <= Third(3)(Mem(Index)); end generate;
  end generate;
  Plain <= Mem(2)(Clk) & Mem(to_integer(Clk)) & Mem(2)(Clk) & Recs(1).Data(Clk);
end;
entity Leaf is port (CLK, RST : in bit; Q : out bit); end;
architecture RTL of Leaf is signal S : bit; begin end;
architecture Alone of Missing is signal Sig : bit; begin end;
)";

const char Second[] = R"(
entity LEAF is port (Start : in bit); end;
architecture rtl of leaf is signal SS : bit; begin end;
)";

VhdlSource source(const char *library, const QByteArray &text)
{
    return {library, text, scanVhdl(text)};
}

QVector<VhdlSource> sources()
{
    return {source("work", Design), source("work", Packages), source("Lib2", Second)};
}

/// "a/b" as {"a", "b"}.
QByteArrayList pathOf(const QByteArray &text)
{
    return text.isEmpty() ? QByteArrayList() : text.split('/');
}

} // namespace

class TestVhdlFacts : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void architecturesAreFound_data();
    void architecturesAreFound();
    void namesKeepTheirSpelling_data();
    void namesKeepTheirSpelling();
    void fieldsKeepTheirSpelling_data();
    void fieldsKeepTheirSpelling();
    void formalsAreAssociated_data();
    void formalsAreAssociated();
    void configurationsBindPorts_data();
    void configurationsBindPorts();
    void instancesHaveLibraries_data();
    void instancesHaveLibraries();
    void memoriesAreTold_data();
    void memoriesAreTold();
    void deepScopesCostTheirLabels();
    void entityWithScopes();

private:
    const VhdlFacts m_facts{sources()};
    const VhdlArchitectureFacts *const m_top = m_facts.find("top", "rtl");
};

void TestVhdlFacts::architecturesAreFound_data()
{
    QTest::addColumn<QByteArray>("entity");
    QTest::addColumn<QByteArray>("architecture");
    QTest::addColumn<QByteArray>("library");
    QTest::addColumn<QByteArray>("expected"); // "LIBRARY ENTITY"
    const auto row = [](const char *name, const char *entity, const char *architecture,
                        const char *library, const char *expected) {
        QTest::newRow(name) << QByteArray(entity) << QByteArray(architecture) << QByteArray(library)
                            << QByteArray(expected);
    };
    row("any library", "top", "rtl", "", "work Top");
    row("the first of two", "leaf", "rtl", "", "work Leaf");
    row("of a library", "leaf", "rtl", "lib2", "Lib2 LEAF");
    row("not in the library", "top", "rtl", "lib2", "work Top");
    row("without an entity", "missing", "alone", "", "work Missing");
    row("unknown architecture", "top", "other", "", "");
    row("unknown entity", "nowhere", "rtl", "", "");
}

void TestVhdlFacts::architecturesAreFound()
{
    QFETCH(QByteArray, entity);
    QFETCH(QByteArray, architecture);
    QFETCH(QByteArray, library);
    const VhdlArchitectureFacts *const facts = m_facts.find(entity, architecture, library);
    QTEST(facts ? facts->library() + ' ' + facts->entityName() : QByteArray(""), "expected");
}

void TestVhdlFacts::namesKeepTheirSpelling_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *path, const char *name, const char *expected) {
        QTest::newRow(qPrintable(QByteArray(path) + ':' + name))
            << QByteArray(path) << QByteArray(name) << QByteArray(expected);
    };
    row("", "clk", "Clk");
    row("", "rst", "RST");
    row("", "\\Ex T\\", "\\Ex T\\");
    row("", "width", "Width");
    row("", "of_entity", "Of_Entity");
    row("", "plain", "Plain");
    row("", "\\Mixed Case\\", "\\Mixed Case\\");
    row("", "u_one", "U_One");
    row("", "gen", "Gen");
    row("", "alt", "Alt");
    row("", "in_gen", "");
    row("gen", "in_gen", "In_Gen");
    row("gen", "u", "U");
    row("gen", "plain", "");
    row("gen/blk", "p", "P");
    row("gen/blk", "deep", "Deep");
    row("alt", "first", "First");
    row("alt", "second", "Second");
    row("alt", "x", "X");
    row("alt/x", "third", "Third");
    row("alt/y", "third", "");
}

void TestVhdlFacts::namesKeepTheirSpelling()
{
    QFETCH(QByteArray, path);
    QFETCH(QByteArray, name);
    QTEST(m_top->spelling(pathOf(path), name), "expected");
}

void TestVhdlFacts::fieldsKeepTheirSpelling_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("name"); // "signal/field/field"
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *path, const char *name, const char *expected) {
        QTest::newRow(name) << QByteArray(path) << QByteArray(name) << QByteArray(expected);
    };
    row("", "data_in/head", "Head");
    row("", "data_in/body_part/data", "Data");
    row("", "data_in/next_part/valid", "Valid");
    row("", "recs/data", "Data");
    row("", "loc/data", "DATA");
    row("", "loc/here", "Here");
    row("", "res/head", "Head");
    row("gen/blk", "p/data", "Data");
    row("", "elsewhere/only_here", "Only_Here"); // No other record has it.
    row("", "unknown/valid", "Valid");
    row("", "unknown/data", ""); // Two records spell it in two ways.
    row("", "round/data", "");
    row("", "data_in/nothing", "");
}

void TestVhdlFacts::fieldsKeepTheirSpelling()
{
    QFETCH(QByteArray, path);
    QFETCH(QByteArray, name);
    const QByteArrayList names = name.split('/');
    QTEST(m_top->fieldSpelling(pathOf(path), names.first(), names.mid(1, names.size() - 2),
                               names.last()),
          "expected");
}

void TestVhdlFacts::formalsAreAssociated_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("label");
    QTest::addColumn<QByteArray>("formal");
    QTest::addColumn<bool>("expected");
    const auto row = [](const char *path, const char *label, const char *formal, bool expected) {
        QTest::newRow(qPrintable(QByteArray(label) + ':' + formal))
            << QByteArray(path) << QByteArray(label) << QByteArray(formal) << expected;
    };
    row("", "u_one", "clk", true); // By position.
    row("", "u_one", "rst", false);
    row("", "u_one", "q", true);
    row("", "u_one", "part", true);
    row("", "u_one", "conv", true);
    row("", "u_one", "off", false);
    row("", "u_two", "a", true); // Of a component in a package.
    row("", "u_two", "b", false);
    row("", "u_two", "q", true);
    row("", "u_three", "x", false); // Not in the map.
    row("", "u_three", "y", true);
    row("", "u_four", "x", true);
    row("", "u_five", "clk", false);
    row("", "u_six", "start", true); // The entity of that library.
    row("", "u_six", "clk", false);
    row("", "b_one", "clk", false); // Through a binding.
    row("", "b_one", "rst", true);
    row("", "b_one", "q", true);
    row("", "b_two", "clk", true);
    row("", "b_two", "q", false);
    row("", "b_three", "clk", true);
    row("", "b_three", "rst", false);
    row("", "b_four", "clk", false);
    row("gen", "u", "clk", true);
    row("gen", "blk", "p", true);
    row("gen", "blk", "p2", false);
    row("gen", "blk", "p3", false);
    row("gen", "blk", "p4", true);
    row("", "u", "clk", false);
}

void TestVhdlFacts::formalsAreAssociated()
{
    QFETCH(QByteArray, path);
    QFETCH(QByteArray, label);
    QFETCH(QByteArray, formal);
    QTEST(m_top->isAssociated(pathOf(path), label, formal), "expected");
}

void TestVhdlFacts::configurationsBindPorts_data()
{
    QTest::addColumn<QByteArray>("entity");
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("label");
    QTest::addColumn<QByteArray>("formals");
    const auto row = [](const char *name, const char *entity, const char *path, const char *label,
                        const char *formals) {
        QTest::newRow(name) << QByteArray(entity) << QByteArray(path) << QByteArray(label)
                            << QByteArray(formals);
    };
    row("by label", "top", "", "u1", "a b");
    row("others, in a generate", "top", "g", "u2", "b");
    row("without a port map", "top", "", "u3", "");
    row("below a bound instance", "leaf", "", "v", "p");
    row("configuration by position", "top", "", "u4", "a");
}

void TestVhdlFacts::configurationsBindPorts()
{
    QFETCH(QByteArray, entity);
    QFETCH(QByteArray, path);
    QFETCH(QByteArray, label);
    const VhdlFacts facts({source("work", R"(
configuration Cfg of Top is
  for Rtl
    for U1 : Comp use entity work.Leaf(Rtl) port map (A => I, B => '1', C => J);
      for Rtl
        for all : Cell use entity work.Prim port map (P => K); end for;
      end for;
    end for;
    for U3 : Comp use entity work.Leaf; end for;
    for G (0) for others : Comp use entity work.Leaf port map (open, I); end for; end for;
  end for;
end;
entity Top is end;
architecture Rtl of Top is
  component Comp is port (I, J : in bit); end component;
begin
  U1 : Comp port map (I => '1', J => open);
  G : for X in 0 to 1 generate U2 : Comp port map (I => '1'); end generate;
  U3 : Comp port map (I => '1');
  U4 : configuration work.Leaf_Cfg port map ('1');
end;
entity Leaf is port (A, B, C : in bit := '0'); end;
architecture Rtl of Leaf is
  component Cell is port (K : in bit); end component;
begin
  V : Cell port map ('1');
end;
configuration Leaf_Cfg of Leaf is for Rtl end for; end;
)")});
    QByteArrayList formals;
    for (const char *const formal : {"a", "b", "c", "p"}) {
        if (facts.find(entity, "rtl")->isAssociated(pathOf(path), label, formal))
            formals.append(formal);
    }
    QTEST(formals.join(' '), "formals");
}

void TestVhdlFacts::instancesHaveLibraries_data()
{
    QTest::addColumn<QByteArray>("label");
    QTest::addColumn<QByteArray>("library");
    const auto row = [](const char *label, const char *library) {
        QTest::newRow(label) << QByteArray(label) << QByteArray(library);
    };
    row("own", "lib1");
    row("named", "lib2");
    row("local", "lib1");
    row("packaged", "lib2");
    row("bound", "lib2");
    row("configured", "lib2");
    row("unknown", "lib1");
}

void TestVhdlFacts::instancesHaveLibraries()
{
    QFETCH(QByteArray, label);
    const VhdlFacts facts({source("lib1", R"(
entity Top is end;
architecture Rtl of Top is
  component Leaf is end component;
  component Other is end component;
  component Third is end component;
  for Bound : Other use entity LIB2.Leaf;
begin
  Own : entity work.Leaf;
  Named : entity Lib2.Leaf;
  Local : Leaf port map ('1');
  Packaged : Cell port map ('1');
  Bound : Other port map ('1');
  Configured : Third port map ('1');
end;
configuration Cfg of Top is for Rtl for all : Third use entity Lib2.Leaf; end for; end for; end;
)"),
                           source("lib2", "package P is component Cell is end component; end;")});
    QTEST(facts.find("top", "rtl")->libraryOf({}, label), "library");
}

void TestVhdlFacts::memoriesAreTold_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("depth");
    QTest::newRow("least depth of three") << QByteArray() << QByteArray("mem") << 0;
    QTest::newRow("with a field") << QByteArray() << QByteArray("recs.data") << 0;
    QTest::newRow("constant indexes only") << QByteArray() << QByteArray("recs") << -1;
    QTest::newRow("in a generate") << QByteArray("alt/x") << QByteArray("third") << 1;
    QTest::newRow("elsewhere") << QByteArray("alt") << QByteArray("third") << -1;
    QTest::newRow("unknown path") << QByteArray("nowhere") << QByteArray("mem") << -1;
}

void TestVhdlFacts::memoriesAreTold()
{
    QFETCH(QByteArray, path);
    QFETCH(QByteArray, name);
    QTEST(m_top->computedIndexDepth(pathOf(path), name), "depth");
}

void TestVhdlFacts::deepScopesCostTheirLabels()
{
    constexpr int Depth = 100000;
    const QByteArray text = "architecture a of e is begin " +
                            QByteArray("G : if C generate signal S : bit; begin ").repeated(Depth) +
                            QByteArray("end generate; ").repeated(Depth) + "end;";
    const VhdlFacts facts({source("work", text)});
    QByteArrayList path;
    for (int i = 0; i < Depth; ++i)
        path.append("g");
    QCOMPARE(facts.find("e", "a")->spelling(path, "s"), QByteArray("S"));
}

/// In a text with errors.
void TestVhdlFacts::entityWithScopes()
{
    const VhdlFacts facts({source("work", "entity e is G : if x generate signal S : t; end; "
                                          "architecture a of e is begin end;")});
    QCOMPARE(facts.find("e", "a")->spelling({}, "s"), QByteArray("S"));
}

TARN_TEST_MAIN(TestVhdlFacts)
#include "tst_vhdlfacts.moc"
