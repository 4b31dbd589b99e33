// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/vhdl/vhdlindexes.h>

#include <netweir/internal/vhdl/vhdlscan.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;

namespace {

/// "SCOPE NAME DEPTH" of each computed index in the architecture.
QByteArray indexesText(const QByteArray &text)
{
    const VhdlFile file = scanVhdl(text);
    const VhdlUnit *entity = nullptr;
    QByteArrayList lines;
    for (const VhdlUnit &unit : file.units) {
        if (unit.kind == VhdlUnit::Entity)
            entity = &unit;
        if (unit.kind != VhdlUnit::Architecture)
            continue;
        for (const VhdlComputedIndex &index : computedIndexes(text, unit, entity))
            lines.append(QByteArray::number(index.scope) + ' ' + index.name + ' ' +
                         QByteArray::number(index.depth));
    }
    return lines.join(", ");
}

/// An architecture with @p declarations and @p statements; its entity has the ports d and pick, and
/// the generic G.
QByteArray design(const QByteArray &declarations, const QByteArray &statements)
{
    return "entity e is generic (G : integer); port (D : in word; Pick : in natural); end;\n"
           "architecture rtl of e is signal Mem, m2 : words; signal i, j : natural; constant C : "
           "natural := 1;" +
           declarations + "\nbegin\n" + statements + "\nend;\n";
}

} // namespace

class TestVhdlIndexes : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void areFoundInStatements_data();
    void areFoundInStatements();
    void areFoundBehindDeclarations_data();
    void areFoundBehindDeclarations();
    void survivesBrokenText_data();
    void survivesBrokenText();
};

void TestVhdlIndexes::areFoundInStatements_data()
{
    QTest::addColumn<QByteArray>("statements");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const char *statements, const char *expected) {
        QTest::newRow(name) << QByteArray(statements) << QByteArray(expected);
    };
    row("nothing", "", "");
    row("signal", "x <= mem(i);", "0 mem 0");
    row("port", "x <= MEM(Pick);", "0 mem 0");
    row("of a port", "x <= d(pick);", "0 d 0");
    row("target", "mem(i) <= x;", "0 mem 0");
    row("literal, generic and constant", "x <= mem(3) & mem(G) & mem(C + 1) & mem(work.p.k);", "");
    row("conversion", "x <= mem(to_integer(unsigned(i)));", "0 mem 0");
    row("nested index", "x <= mem(m2(i));", "0 m2 0, 0 mem 0");
    row("constant index of a signal within an index", "x <= mem(m2(3));", "0 mem 0");
    row("second index", "x <= mem(3)(i);", "0 mem 1");
    row("first of two indexes", "x <= mem(i)(3);", "0 mem 0");
    row("two dimensions", "x <= mem(3, i);", "0 mem 0");
    row("range", "x <= mem(i downto 0);", "0 mem 0");
    row("index behind a range", "x <= mem(7 downto 4)(i);", "0 mem 0");
    row("index behind the range of something", "x <= mem(m2'range)(i);", "0 mem 0");
    row("field", "x <= mem.F.g(i);", "0 mem.f.g 0");
    row("field of an element", "x <= mem(3).F(2)(i);", "0 mem.f 1");
    row("computed element with a field", "x <= mem(i).f(2);", "0 mem 0");
    row("field as an index", "x <= mem(rec.i) & mem(i.f);", "0 mem 0");
    row("attributes of signals",
        "x <= mem(i'length - 1) & mem(i'range) & mem(i.f'high) & mem(i'low);", "");
    row("value attributes", "x <= mem(i'delayed(2 ns));", "0 mem 0");
    row("attribute with an argument", "x <= mem(t'pos(i));", "0 mem 0");
    row("qualified expression", "x <= mem(natural'(i));", "0 mem 0");
    row("whole array", "u : comp port map (mem, i); mem <= (others => i); p(mem);", "");
    row("computed index in a call", "p(mem(i), j);", "0 mem 0");
    row("computed index in a map", "u : comp port map (a => mem(i));", "0 mem 0");
    row("formals are not names of here", "u : comp port map (i => mem(f(i => 3)));", "");
    row("two times", "x <= mem(i) & m2(j) & mem(j);", "0 mem 0, 0 m2 0, 0 mem 0");
    row("characters and strings", "x <= mem(f('(', \"(i\", c));", "");
    row("variable", "process variable v : natural; begin x <= mem(v); end process; y <= mem(v);",
        "0 mem 0");
    row("of a variable", "process variable v : words; begin x <= v(i); end process;", "");
    row("variable that hides a signal",
        "process variable mem : words; begin x <= mem(i); end process; y <= mem(j);", "0 mem 0");
    row("constant that hides a signal",
        "process constant i : natural := 3; begin x <= mem(i); end process;", "");
    row("computed constant",
        "process constant k : natural := i + 1; begin x <= mem(k); end process;", "0 mem 0");
    row("alias of a variable",
        "process variable v : natural; alias a : natural is v; begin x <= mem(a); end process;",
        "0 mem 0");
    row("loop",
        "process begin for i in 0 to 3 loop x <= mem(i); end loop; x <= mem(i); end process;",
        "0 mem 0");
    row("loop with computed range",
        "process begin for k in 0 to j loop x <= mem(k); end loop; end process;", "0 mem 0");
    row("loop over the range of a signal",
        "process begin for k in mem'range loop x <= mem(k); end loop; end process;", "");
    row("loops in one another",
        "process begin l : for a in 0 to 3 loop for b in 0 to a loop x <= mem(a + b); end loop; "
        "end "
        "loop l; x <= mem(b); end process;",
        "");
    row("while loop",
        "process variable v : natural; begin while v < 3 loop x <= mem(v); end loop; end process;",
        "0 mem 0");
    row("conditions and cases",
        "process begin if i = 3 then case j is when 2 => x <= mem(3); when others => null; end "
        "case; elsif j = 2 then x <= mem(j); end if; end process;",
        "0 mem 0");
    row("sensitivity list", "process (mem(i)) begin end process;", "0 mem 0");
    row("wait for a time", "process begin wait for i; x <= mem(i); end process;", "0 mem 0");
    row("generate parameter",
        "g : for i in 0 to 3 generate x <= mem(i); end generate; y <= mem(j);", "0 mem 0");
    row("signal of a generate",
        "g : if G = 1 generate signal mem : words; begin x <= mem(i); end; elsif G = 2 generate x "
        "<= mem(3); else generate signal k : natural; begin x <= mem(k); end; end generate; y <= "
        "mem(k);",
        "1 mem 0, 0 mem 0");
    row("case generate",
        "g : case G generate when 1 => signal q : words; begin x <= q(i); when others => x <= "
        "q(i); end generate;",
        "1 q 0");
    row("block",
        "b : block is port (p : in natural; q : in words); port map (i, mem); signal s : words; "
        "begin x <= q(p) & s(p) & mem(p); end block; y <= s(p);",
        "1 q 0, 1 s 0, 0 mem 0");
    row("process in a generate",
        "g : for k in 0 to 3 generate process begin for l in 0 to k loop x <= mem(l + k); end "
        "loop; end process; end generate;",
        "");
}

void TestVhdlIndexes::areFoundInStatements()
{
    QFETCH(QByteArray, statements);
    QTEST(indexesText(design({}, statements)), "expected");
}

void TestVhdlIndexes::areFoundBehindDeclarations_data()
{
    QTest::addColumn<QByteArray>("declarations");
    QTest::addColumn<QByteArray>("statements");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const char *declarations, const char *statements,
                        const char *expected) {
        QTest::newRow(name) << QByteArray(declarations) << QByteArray(statements)
                            << QByteArray(expected);
    };
    row("alias of a memory", "alias a : words is mem;", "x <= a(i);", "0 mem 0");
    row("alias of a field", "alias a is mem.f(3).g;", "x <= a(2)(i);", "0 mem.f.g 1");
    row("alias of an element", "alias a is mem(3);", "x <= a(i);", "0 mem 1");
    row("alias of a part", "alias a is mem(7 downto 4);", "x <= a(i);", "0 mem 0");
    row("alias of a signal as an index", "alias a is i;", "x <= mem(a);", "0 mem 0");
    row("alias of a constant", "alias a is C;", "x <= mem(a);", "");
    row("shared variable", "shared variable v : natural;", "x <= mem(v);", "0 mem 0");
    row("parameter",
        "function f (k : natural; signal w : words) return word is begin return mem(k) & w(k); "
        "end;",
        "x <= mem(k);", "0 mem 0");
    row("computed constant of a function",
        "function f (k : natural) return word is constant n : natural := k; begin return mem(n); "
        "end function;",
        "", "0 mem 0");
    row("parameter that hides a memory",
        "procedure f (mem : words) is begin x := mem(i); end; procedure g (a : natural);",
        "x <= mem(a);", "");
    row("functions in one another",
        "function f (a : natural) return word is function g (b : natural) return word is begin if "
        "b = 1 then return mem(b); end if; end; begin for k in 1 to 2 loop return mem(b); end "
        "loop; end function f;",
        "x <= mem(a);", "0 mem 0");
    row("attribute of a function",
        "attribute s of f : function is \"x\"; attribute s of g : procedure is \"y\";",
        "x <= mem(i);", "0 mem 0");
    row("protected type",
        "type t is protected body variable v : words; function g (a : natural) return word is "
        "begin return v(a); end; end protected body t;",
        "x <= mem(a); y <= mem(i);", "0 mem 0");
    row("component",
        "component c is generic (i : natural); port (mem : in word(i downto 0)); end component;",
        "", "");
}

void TestVhdlIndexes::areFoundBehindDeclarations()
{
    QFETCH(QByteArray, declarations);
    QFETCH(QByteArray, statements);
    QTEST(indexesText(design(declarations, statements)), "expected");
}

void TestVhdlIndexes::survivesBrokenText_data()
{
    QTest::addColumn<QByteArray>("statements");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const QByteArray &statements, const char *expected) {
        QTest::newRow(name) << statements << QByteArray(expected);
    };
    constexpr int Depth = 100000;
    row("closing parentheses", "x <= mem(i))); y <= mem(j);", "0 mem 0, 0 mem 0");
    row("opening parentheses", "x <= (((mem(i); y <= mem(j);", "0 mem 0, 0 mem 0");
    row("ends", "end loop; end process; end if; end function; x <= mem(i);", "0 mem 0");
    row("process without an end in a generate",
        "g : for k in 0 to 1 generate process variable v : natural; begin x <= mem(v); end "
        "generate; y <= mem(v);",
        "0 mem 0, 0 mem 0");
    row("deep parentheses",
        "x <= mem" + QByteArray(Depth, '(') + "i" + QByteArray(Depth, ')') + ';', "0 mem 0");
    row("deep indexes", "x <= " + QByteArray("mem(").repeated(3) + 'i' + QByteArray(3, ')') + ';',
        "0 mem 0, 0 mem 0, 0 mem 0");
    row("deep loops",
        "process begin " + QByteArray("for k in 0 to 1 loop ").repeated(Depth) + "x <= mem(k);" +
            QByteArray("end; ").repeated(Depth) + " end process; y <= mem(k) & mem(i);",
        "0 mem 0");
    row("deep generates",
        QByteArray("g : for k in 0 to 1 generate ").repeated(Depth) + "x <= mem(k) & mem(i);" +
            QByteArray("end generate; ").repeated(Depth),
        "0 mem 0");
}

void TestVhdlIndexes::survivesBrokenText()
{
    QFETCH(QByteArray, statements);
    QTEST(indexesText(design({}, statements)), "expected");
}

TARN_TEST_MAIN(TestVhdlIndexes)
#include "tst_vhdlindexes.moc"
