// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/vhdl/vhdlscan.h>

#include <support/processortime.h>
#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;

namespace {

QByteArray part(const QByteArray &text, const TextRange &range)
{
    return text.mid(range.begin, range.end - range.begin);
}

QByteArray itemsText(const QByteArray &text, const QVector<VhdlInterfaceItem> &items)
{
    static const char *const modes[] = {"in", "out", "inout", "buffer", "linkage"};
    static const char *const kinds[] = {"", "type ", "subprogram ", "package "};
    QByteArrayList parts;
    for (const VhdlInterfaceItem &item : items) {
        QByteArray line =
            kinds[item.kind] + item.name + ':' + modes[item.mode] + ' ' + part(text, item.type);
        if (item.value.end > item.value.begin)
            line += '=' + part(text, item.value);
        parts.append(line);
    }
    return '(' + parts.join("; ") + ')';
}

QByteArray interfaceText(const QByteArray &text, const VhdlInterface &interface)
{
    QByteArray result;
    if (!interface.generics.isEmpty())
        result += " generic" + itemsText(text, interface.generics);
    if (!interface.ports.isEmpty())
        result += " port" + itemsText(text, interface.ports);
    return result;
}

QByteArray mapText(const QByteArray &text, const QVector<VhdlAssociation> &associations)
{
    QByteArrayList parts;
    for (const VhdlAssociation &association : associations) {
        QByteArray line;
        if (!association.formalNames.isEmpty())
            line = part(text, association.formal) + '{' + association.formalNames.join(' ') + "}=>";
        parts.append(line + part(text, association.actual) + (association.isOpen ? "!" : ""));
    }
    return '(' + parts.join(", ") + ')';
}

QByteArray contextText(const VhdlContext &context)
{
    QByteArray result;
    for (const QByteArray &library : context.libraries)
        result += " lib " + library;
    for (const QByteArrayList &name : context.uses)
        result += " use " + name.join('.');
    for (const QByteArrayList &name : context.contexts)
        result += " context " + name.join('.');
    return result;
}

QByteArray bindingText(const VhdlBinding &binding)
{
    static const char *const kinds[] = {"entity", "configuration", "open"};
    QByteArray line = "for " + binding.labels.join(',') + ':' + binding.component.join('.') + ' ' +
                      kinds[binding.kind];
    if (!binding.unit.isEmpty())
        line += ' ' + binding.unit.join('.');
    if (!binding.architecture.isEmpty())
        line += '(' + binding.architecture + ')';
    if (!binding.path.isEmpty())
        line += " in " + binding.path.join('/');
    return line;
}

QByteArray instanceText(const QByteArray &text, const VhdlInstance &instance)
{
    static const char *const kinds[] = {"component", "entity", "configuration"};
    QByteArray line = instance.label + ' ' + kinds[instance.kind] + ' ' + instance.unit.join('.');
    if (!instance.architecture.isEmpty())
        line += '(' + instance.architecture + ')';
    if (!instance.generics.isEmpty())
        line += " generic" + mapText(text, instance.generics);
    if (!instance.ports.isEmpty())
        line += " port" + mapText(text, instance.ports);
    return line + (instance.bare ? " bare" : "");
}

/// The declarations of one scope, by kind.
QByteArray declarationsText(const QByteArray &text, const VhdlUnit &unit, int scope)
{
    static const char *const kinds[] = {"signal",     "constant", "variable", "file",
                                        "alias",      "type",     "subtype",  "attribute",
                                        "subprogram", "package",  "group"};
    QByteArray result;
    for (const VhdlDeclaration &declaration : unit.declarations) {
        if (declaration.scope != scope)
            continue;
        result += QByteArray(" ") + kinds[declaration.kind] + ' ' + declaration.name;
        if (declaration.type.end > declaration.type.begin)
            result += ':' + part(text, declaration.type);
        if (declaration.value.end > declaration.value.begin)
            result += '=' + part(text, declaration.value);
        result += ';';
    }
    for (const VhdlRecordField &field : unit.fields) {
        if (field.scope == scope)
            result +=
                " field " + field.record + '.' + field.name + ':' + part(text, field.type) + ';';
    }
    return result;
}

/// One line for each scope, its components, instances and bindings, with the number of the scope.
QByteArrayList scopeLines(const QByteArray &text, const VhdlUnit &unit, int number)
{
    static const char *const kinds[] = {"", "block ", "for ", "if ", "case "};
    const VhdlScope &scope = unit.scopes.at(number);
    const QByteArray prefix = "  " + QByteArray::number(number) + ' ';
    QByteArrayList lines;
    if (number > 0) {
        QByteArray line = prefix + "in " + QByteArray::number(scope.parent) + ' ' +
                          kinds[scope.kind] + scope.label;
        if (!scope.alternative.isEmpty())
            line += '.' + scope.alternative;
        if (scope.head.end > scope.head.begin)
            line += " <" + part(text, scope.head) + '>';
        lines.append(line + interfaceText(text, scope.interface));
    }
    const QByteArray declarations = declarationsText(text, unit, number);
    if (!declarations.isEmpty())
        lines.append("  " + QByteArray::number(number) + declarations);
    for (const VhdlComponent &component : unit.components) {
        if (component.scope == number)
            lines.append(prefix + "component " + component.name +
                         interfaceText(text, component.interface));
    }
    for (const VhdlBinding &binding : unit.bindings) {
        if (binding.scope == number)
            lines.append(prefix + bindingText(binding));
    }
    for (const VhdlInstance &instance : unit.instances) {
        if (instance.scope == number)
            lines.append(prefix + instanceText(text, instance));
    }
    return lines;
}

QByteArrayList unitLines(const QByteArray &text, const VhdlUnit &unit)
{
    static const char *const kinds[] = {"entity",       "architecture",     "package",
                                        "package body", "package instance", "configuration",
                                        "context"};
    QByteArray line = QByteArray(kinds[unit.kind]) + ' ' + unit.name;
    if (!unit.of.isEmpty())
        line += " of " + unit.of.join('.');
    line += interfaceText(text, unit.interface) + contextText(unit.context);
    QByteArrayList lines{line + (unit.complete ? "" : " incomplete")};
    for (int i = 0; i < unit.scopes.size(); ++i)
        lines += scopeLines(text, unit, i);
    if (unit.scopes.isEmpty()) {
        for (const VhdlBinding &binding : unit.bindings)
            lines.append("  " + bindingText(binding));
    }
    return lines;
}

QByteArray fileText(const QByteArray &text)
{
    QByteArrayList lines;
    const VhdlFile file = scanVhdl(text);
    for (const VhdlUnit &unit : file.units)
        lines += unitLines(text, unit);
    return lines.join('\n');
}

} // namespace

class TestVhdlScan : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void findsUnits_data();
    void findsUnits();
    void findsScopes_data();
    void findsScopes();
    void findsInstances_data();
    void findsInstances();
    void findsDeclarations_data();
    void findsDeclarations();
    void skipsBodies_data();
    void skipsBodies();
    void findsWhatItCanInBrokenText_data();
    void findsWhatItCanInBrokenText();
    void knowsPlaces();
    void knowsRanges();
    void nestsToAnyDepth_data();
    void nestsToAnyDepth();
    void survivesEveryPrefix();
    void takesLinearTime_data();
    void takesLinearTime();
};

void TestVhdlScan::findsUnits_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const char *text, const char *expected) {
        QTest::newRow(name) << QByteArray(text) << QByteArray(expected);
    };
    row("nothing", "", "");
    row("entity", "entity E is end;", "entity E");
    row("entity with ports",
        "entity E is generic (N : positive := 8); port (a, b : in bit := '1'; c : out "
        "bit_vector(f(3, (others => 2)) downto 0) bus := (others => '0'); d : buffer bit; e : "
        "inout bit; f : linkage bit); constant C : integer := 3; begin assert true; end entity E;",
        "entity E generic(N:in positive=8) port(a:in bit='1'; b:in bit='1'; c:out bit_vector(f(3, "
        "(others => 2)) downto 0)=(others => '0'); d:buffer bit; e:inout bit; f:linkage bit)\n"
        "  0 constant C:integer=3;");
    row("generics of other kinds",
        "entity E is generic (type T; function F (a : t; b : t) return t is <>; package p is new "
        "work.q generic map (<>)); end;",
        "entity E generic(type T:in ; subprogram F:in (a : t; b : t) return t is <>; package p:in "
        "is new work.q generic map (<>))");
    row("context clauses",
        "library ieee, V; use ieee.a.all, ieee.b.\"+\"; context work.Ctx; entity E is end; entity "
        "F "
        "is end;",
        "entity E lib ieee lib V use ieee.a.all use ieee.b.\"+\" context work.Ctx\nentity F");
    row("architecture", "architecture \\R t\\ of work.E is begin end architecture \\R t\\;",
        "architecture \\R t\\ of work.E");
    row("packages",
        "package P is new work.gp generic map (w => 3); package Q is generic (w : integer); "
        "component L port (a : bit); end component; constant c : bit; function f return bit; end "
        "package; package body Q is constant c : bit := '1'; function f return bit is begin return "
        "'1'; end; end package body;",
        "package instance P of work.gp\npackage Q generic(w:in integer)\n"
        "  0 constant c:bit; subprogram f;\n  0 component L port(a:in bit)\npackage body Q\n"
        "  0 constant c:bit='1'; subprogram f;");
    row("context declaration", "context C is library ieee; use ieee.a.all; end context C;",
        "context C lib ieee use ieee.a.all");
    row("configuration",
        "configuration C of E is use work.all; for rtl for all : X use entity work.Y(a); for a for "
        "u1, u2 : z use open; end for; end for; end for; for G(0) for u : W end for; end for; end "
        "for; end configuration;",
        "configuration C of E\n  for all:X entity work.Y(a) in rtl\n"
        "  for u1,u2:z open in rtl/all/a\n  for u:W open in rtl/G");
}

void TestVhdlScan::findsUnits()
{
    QFETCH(QByteArray, text);
    QTEST(fileText(text), "expected");
}

void TestVhdlScan::findsScopes_data()
{
    QTest::addColumn<QByteArray>("statements");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const char *statements, const char *expected) {
        QTest::newRow(name) << QByteArray(statements) << QByteArray(expected);
    };
    row("block",
        "B : block (clk = '1') is generic (w : integer); generic map (w => 3); port (z : in bit); "
        "port map (z => clk); signal q : bit; begin u : c; end block B; v : c;",
        "  0 v component c bare\n  1 in 0 block B generic(w:in integer) port(z:in bit)\n"
        "  1 signal q:bit;\n  1 u component c bare");
    row("for", "G : for i in 0 to 3 generate signal s : bit; begin u : c; end; end generate G;",
        "  1 in 0 for G <i in 0 to 3>\n  1 signal s:bit;\n  1 u component c bare");
    row("if",
        "G : if X : N > 3 generate signal s : bit; begin u : c; end X; elsif N = 2 generate v : "
        "c; else Y : generate w : c; end Y; end generate; x : c;",
        "  0 x component c bare\n  1 in 0 if G.X <N > 3>\n  1 signal s:bit;\n"
        "  1 u component c bare\n  2 in 0 if G <N = 2>\n  2 v component c bare\n  3 in 0 if G.Y\n"
        "  3 w component c bare");
    row("case",
        "G : case (N) generate when A : 1 | 2 => signal s : bit; begin u : c; end A; when 3 to 5 "
        "=> v : c; when f(a => 1) => when others => end generate;",
        "  1 in 0 case G.A <1 | 2>\n  1 signal s:bit;\n  1 u component c bare\n"
        "  2 in 0 case G <3 to 5>\n  2 v component c bare\n  3 in 0 case G <f(a => 1)>\n"
        "  4 in 0 case G <others>");
    row("in one another",
        "G : for i in a'range generate H : if C generate B : block begin u : c; end block; else "
        "generate v : c; end generate; w : c; end generate;",
        "  1 in 0 for G <i in a'range>\n  1 w component c bare\n  2 in 1 if H <C>\n"
        "  3 in 2 block B\n  3 u component c bare\n  4 in 1 if H\n  4 v component c bare");
}

void TestVhdlScan::findsScopes()
{
    QFETCH(QByteArray, statements);
    QFETCH(QByteArray, expected);
    const QByteArray text = "architecture a of e is begin " + statements + " end;";
    QCOMPARE(fileText(text), "architecture a of e\n" + expected);
}

void TestVhdlScan::findsInstances_data()
{
    QTest::addColumn<QByteArray>("statement");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const char *statement, const char *expected) {
        QTest::newRow(name) << QByteArray(statement) << QByteArray(expected);
    };
    row("component", "u : Comp port map (a, b);", "  0 u component Comp port(a, b)");
    row("with its keyword", "u : component p.Comp;", "  0 u component p.Comp");
    row("entity", "u : entity Lib.Leaf(Rtl) port map (a);", "  0 u entity Lib.Leaf(Rtl) port(a)");
    row("configuration", "u : configuration work.cfg port map (a);",
        "  0 u configuration work.cfg port(a)");
    row("extended names", "\\u 1\\ : entity work.\\L.f\\;", "  0 \\u 1\\ entity work.\\L.f\\");
    row("generics", "u : Comp generic map (8, w => f(a => 3, b => (1, 2))) port map (x => y);",
        "  0 u component Comp generic(8, w{w}=>f(a => 3, b => (1, 2))) port(x{x}=>y)");
    row("generics only", "u : Comp generic map (8);", "  0 u component Comp generic(8)");
    row("open", "u : Comp port map (open, a => open, b => opened, c => open_1);",
        "  0 u component Comp port(open!, a{a}=>open!, b{b}=>opened, c{c}=>open_1)");
    row("formals",
        "u : Comp port map (d(3 downto 0) => v, to_x(q) => to_y(v), r.f => '1', t.g(i) => "
        "(others => '0'));",
        "  0 u component Comp port(d(3 downto 0){d}=>v, to_x(q){to_x q}=>to_y(v), r.f{r}=>'1', "
        "t.g(i){t i}=>(others => '0'))");
    row("strings and characters", "u : Comp port map (a => \");\", b => ')', c => ',');",
        "  0 u component Comp port(a{a}=>\");\", b{b}=>')', c{c}=>',')");
    row("comments", "u : -- x\n Comp /* y */ port -- map\n map (a -- b\n => c);",
        "  0 u component Comp port(a{a}=>c)");
    row("no map", "u : Comp;", "  0 u component Comp bare");
    row("no instance",
        "a : p(x, y); b : work.p.q(x); c : x <= y; d : (x, y) <= z; e : assert true; f : with s "
        "select x <= y when 1, z when others; g : postponed x <= y; h : process begin end process; "
        "i : << signal .a.b : bit >> <= '1'; x(3) <= y; p(x); q;",
        "");
}

void TestVhdlScan::findsInstances()
{
    QFETCH(QByteArray, statement);
    QFETCH(QByteArray, expected);
    const QByteArray text = "architecture a of e is begin " + statement + " end;";
    QCOMPARE(fileText(text),
             "architecture a of e" + (expected.isEmpty() ? expected : '\n' + expected));
}

void TestVhdlScan::findsDeclarations_data()
{
    QTest::addColumn<QByteArray>("declarations");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const char *declarations, const char *expected) {
        QTest::newRow(name) << QByteArray(declarations) << QByteArray(expected);
    };
    row("objects",
        "signal A, \\b c\\ : word(3 downto 0) := (others => '0'); constant K : integer; shared "
        "variable V : t; file F : text open read_mode is \"x\";",
        "  0 signal A:word(3 downto 0)=(others => '0'); signal \\b c\\:word(3 downto 0)=(others => "
        "'0'); constant K:integer; variable V:t; file F:text open read_mode is \"x\";");
    row("words of other editions as names", "signal context, protected, property, default : bit;",
        "  0 signal context:bit; signal protected:bit; signal property:bit; signal default:bit;");
    row("aliases", "alias A : bit is b(3); alias \"+\" is \"-\" [t, t return t];",
        "  0 alias A:b(3); alias \"+\":\"-\" [t, t return t];");
    row("types",
        "type E is ('a', idle, ''', ';'); type A is array (0 to 1) of t; subtype S is t range 0 to "
        "3; type I; type P is access t;",
        "  0 type E:('a', idle, ''', ';'); type A:array (0 to 1) of t; subtype S:t range 0 to 3; "
        "type P:access t;");
    row("units", "type D is range 0 to 9 units nm; um = 1000 nm; end units D; signal s : bit;",
        "  0 type D:range 0 to 9 units nm; um = 1000 nm; end units D;; signal s:bit;");
    row("records", "type R is record A, b : bit; \\c d\\ : word(3 downto 0); end record R;",
        "  0 type R:record A, b : bit; \\c d\\ : word(3 downto 0); end record R; field R.A:bit; "
        "field R.b:bit; field R.\\c d\\:word(3 downto 0);");
    row("components",
        "component C is generic (G : integer := 3); port (x : in bit; y : out bit); end component "
        "C; component D port (x : bit); end component; component E end component;",
        "  0 component C generic(G:in integer=3) port(x:in bit; y:out bit)\n"
        "  0 component D port(x:in bit)\n  0 component E");
    row("bindings",
        "for all : C use entity lib.C(fast) generic map (G => 3) port map (x => x); for u1, u2 : "
        "p.D use configuration work.cfg; end for; for others : E use open; for u3 : F end for; "
        "signal s : bit;",
        "  0 signal s:bit;\n  0 for all:C entity lib.C(fast)\n"
        "  0 for u1,u2:p.D configuration work.cfg\n  0 for others:E open\n  0 for u3:F open");
    row("attributes",
        "attribute M : string; attribute M of a : signal is \"true\"; attribute M of all : "
        "component is \"units\"; attribute M of t : type is \"x\"; attribute M of f [bit return "
        "bit] : function is \"y\"; signal s : bit;",
        "  0 attribute M; signal s:bit;");
    row("nested packages",
        "package N is new work.gp generic map (w => 3); package O is constant k : integer := 1; "
        "component C port (z : bit); end component; end package O; package body O is end; signal "
        "s : bit;",
        "  0 package N; package O; constant k:integer=1; package O; signal s:bit;\n"
        "  0 component C port(z:in bit)");
    row("groups and disconnections",
        "group g is (signal, label <>); group h : g (a, b); disconnect s : bit after 1 ns; signal "
        "s : bit;",
        "  0 signal s:bit;");
    row("assertion language",
        "default clock is rising_edge(clk); sequence q is {a; b}; property p is always q; signal s "
        ": bit;",
        "  0 signal s:bit;");
}

void TestVhdlScan::findsDeclarations()
{
    QFETCH(QByteArray, declarations);
    QFETCH(QByteArray, expected);
    const QByteArray text = "architecture a of e is " + declarations + " begin end;";
    QCOMPARE(fileText(text), "architecture a of e\n" + expected);
}

/// Each row is skipped whole: the signal behind it and the instance are found.
void TestVhdlScan::skipsBodies_data()
{
    QTest::addColumn<QByteArray>("declarations");
    QTest::addColumn<QByteArray>("statements");
    const auto row = [](const char *name, const char *declarations, const char *statements) {
        QTest::newRow(name) << QByteArray(declarations) << QByteArray(statements);
    };
    row("process", "",
        "process (clk, rst) is signal x : bit; variable v : t; begin if a then b <= c; end if; end "
        "process; p : postponed process begin wait; end postponed process p;");
    row("statements of a process", "",
        "process begin l : for i in 0 to 3 loop next l when a; exit l; end loop l; while a loop "
        "null; end loop; case a is when 1 => null; when others => x : y(3); end case; case? a is "
        "when 1 => null; end case?; wait until a for 1 ns; end process;");
    row("subprograms in a process", "",
        "process procedure f (a : bit) is begin u : c; end; begin end process;");
    row("function",
        "function f (a : bit; b : t := (1, 2)) return t is signal x : bit; begin if a then return "
        "b; elsif c then return d; else return e; end if; end function f;",
        "");
    row("declared functions",
        "function f return t; pure function g (a : bit) return t; impure function h return t; "
        "procedure p; procedure q (signal a : bit);",
        "");
    row("operator", "function \"+\" (a, b : t) return t is begin return a; end function \"+\";",
        "");
    row("instance of a function", "function f is new g generic map (t => bit);", "");
    row("functions in one another",
        "procedure p is function g return t is begin case a is when 1 => return b; end case; end; "
        "procedure q; type r is record a : bit; end record r; begin for i in 1 to 2 loop null; end "
        "loop; end procedure p;",
        "");
    row("types in a function",
        "procedure p is type d is range 0 to 1 units nm; end units; attribute a of f : function is "
        "1; attribute b of u : units is 2; alias c is d; package k is new l; package m is "
        "constant n : t := 1; end package; begin end;",
        "");
    row("generic function",
        "function f generic (type t; function g (a : t) return t) parameter (x : t) return t is "
        "begin return x; end;",
        "");
    row("protected types",
        "type p is protected procedure x (a : t); impure function y return bit; end protected p; "
        "type p is protected body variable v : t; procedure x (a : t) is begin if a then v := 1; "
        "end if; end; impure function y return bit is begin return '1'; end; end protected body p;",
        "");
    row("protected types in a function",
        "procedure p is type q is protected procedure x; end protected; type q is protected body "
        "procedure x is begin end; end protected body; variable v : q; begin v.x; end;",
        "");
    row("assignments", "",
        "a <= b when c else d after 1 ns, e after 2 ns; with s select a <= b when 1, c when "
        "others; with s select? a <= b when 1; a <= guarded transport b; a <= reject 1 ns inertial "
        "b; postponed p(a); (a, b) <= c;");
    row("assertions", "", "assert a report \"; end;\" & f(x => 1) severity failure;");
}

void TestVhdlScan::skipsBodies()
{
    QFETCH(QByteArray, declarations);
    QFETCH(QByteArray, statements);
    const VhdlFile file =
        scanVhdl("architecture a of e is " + declarations + " signal s : bit; begin " + statements +
                 " u : c port map (s); end; entity f is end;");
    QCOMPARE(file.units.size(), 2);
    const VhdlUnit &unit = file.units.first();
    QVERIFY(unit.complete);
    QCOMPARE(unit.instances.size(), 1);
    QCOMPARE(unit.instances.first().label, QByteArray("u"));
    QByteArrayList signalNames;
    for (const VhdlDeclaration &declaration : unit.declarations) {
        if (declaration.kind == VhdlDeclaration::Signal)
            signalNames.append(declaration.name);
    }
    QCOMPARE(signalNames, QByteArrayList{"s"});
}

void TestVhdlScan::findsWhatItCanInBrokenText_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const QByteArray &text, const char *expected) {
        QTest::newRow(name) << text << QByteArray(expected);
    };
    row("no units", "signal a; end; begin process end process;", "");
    row("entity without an end", "entity e is port (a : in bit); entity f is end;",
        "entity e port(a:in bit) incomplete\nentity f");
    row("architecture without an end",
        "architecture a of e is begin u : c; architecture b of e is begin end;",
        "architecture a of e incomplete\n  0 u component c bare\narchitecture b of e");
    row("process without an end",
        "architecture a of e is begin process begin x; architecture b of e is begin end;",
        "architecture a of e incomplete\narchitecture b of e");
    row("generate without an end",
        "architecture a of e is begin g : for i in x generate u : c; end architecture; entity f is "
        "end;",
        "architecture a of e\n  1 in 0 for g <i in x>\n  1 u component c bare\nentity f");
    row("end without a generate",
        "architecture a of e is begin end generate; end block; end process; u : c; end a;",
        "architecture a of e\n  0 u component c bare");
    row("open port list", "entity e is port (a : in bit; b : out bit end; entity f is end;",
        "entity e port(a:in bit; b:out bit)\nentity f");
    row("open map", "architecture a of e is begin u : c port map (x => (y; v : d; end;",
        "architecture a of e\n  0 u component c port(x{x}=>(y)\n  0 v component d bare");
    row("open parameters",
        "architecture a of e is function f (a : t return t is begin return a; end; begin u : c; "
        "end;",
        "architecture a of e\n  0 subprogram f;");
    row("missing semicolon", "architecture a of e is signal a : bit signal b : bit; begin end;",
        "architecture a of e\n  0 signal a:bit signal b : bit;");
    row("open string", "architecture a of e is signal s : t := \"x;\n signal r : t; begin end;",
        "architecture a of e\n  0 signal s:t=\"x;\n signal r : t;");
    row("NUL bytes", QByteArray("entity\0 e is end;\0 entity f is end;", 36), "entity f");
    row("keywords in place of names", "entity is is end; architecture of of is; package is;", "");
    row("end of the text", "architecture a of e is component c is port (x : in bit; y",
        "architecture a of e incomplete\n  0 component c port(x:in bit; y:in )");
}

void TestVhdlScan::findsWhatItCanInBrokenText()
{
    QFETCH(QByteArray, text);
    QTEST(fileText(text), "expected");
}

void TestVhdlScan::knowsPlaces()
{
    const QByteArray text = "\nentity e is\n port (a,\n  b : bit);\nend;\n architecture r of e is\n"
                            "  signal s,\n t : bit;\n component\n c end component;\nbegin\n"
                            "  u : c port map (a,\n   b => b);\n g : if x generate end generate;\n"
                            " end;";
    const VhdlFile file = scanVhdl(text);
    const auto place = [](const auto &item) {
        return QByteArray::number(item.line) + ':' + QByteArray::number(item.column);
    };
    const VhdlUnit &entity = file.units.at(0);
    const VhdlUnit &unit = file.units.at(1);
    QCOMPARE(place(entity), QByteArray("2:8"));
    QCOMPARE(place(entity.interface.ports.at(0)), QByteArray("3:8"));
    QCOMPARE(place(entity.interface.ports.at(1)), QByteArray("4:3"));
    QCOMPARE(place(unit), QByteArray("6:15"));
    QCOMPARE(place(unit.declarations.at(0)), QByteArray("7:10"));
    QCOMPARE(place(unit.declarations.at(1)), QByteArray("8:2"));
    QCOMPARE(place(unit.components.at(0)), QByteArray("10:2"));
    QCOMPARE(place(unit.instances.at(0)), QByteArray("12:3"));
    QCOMPARE(place(unit.instances.at(0).ports.at(1)), QByteArray("13:4"));
    QCOMPARE(place(unit.scopes.at(1)), QByteArray("14:2"));
}

void TestVhdlScan::knowsRanges()
{
    const QByteArray text =
        "-- x\nlibrary l; use l.p.all; -- y\nentity e is end entity; architecture a of e is "
        "component c end component; begin u : c; g : case n generate when 1 => v : c; when 2 => "
        "end generate; b : block begin end block; h : if x generate else generate end generate; "
        "end a;";
    const VhdlFile file = scanVhdl(text);
    const VhdlUnit &unit = file.units.at(1);
    QCOMPARE(part(text, file.units.at(0).context.range), QByteArray("library l; use l.p.all;"));
    QCOMPARE(part(text, file.units.at(0).range), QByteArray("entity e is end entity;"));
    QVERIFY(part(text, unit.range).startsWith("architecture a"));
    QVERIFY(part(text, unit.range).endsWith("end a;"));
    QCOMPARE(part(text, unit.components.at(0).range), QByteArray("component c end component;"));
    QCOMPARE(part(text, unit.instances.at(0).range), QByteArray("u : c;"));
    QVERIFY(!unit.instances.at(0).conditional);
    QVERIFY(unit.instances.at(1).conditional);
    QByteArrayList scopes;
    for (const VhdlScope &scope : unit.scopes.mid(1))
        scopes.append(part(text, scope.range));
    QCOMPARE(scopes.join('|'),
             QByteArray("when 1 => v : c;|when 2 => end generate;|block begin end block;|if x "
                        "generate|else generate end generate;"));
    QCOMPARE(part(text, unit.scopes.at(1).opening), QByteArray("case n generate"));
    QCOMPARE(part(text, unit.scopes.at(2).selector), QByteArray("n"));
}

void TestVhdlScan::nestsToAnyDepth_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("scopes");
    constexpr int Depth = 100000;
    const QByteArray begin("architecture a of e is begin ");
    const QByteArray generates = QByteArray("g : if c generate ").repeated(Depth);
    QTest::newRow("generates") << begin + generates + QByteArray("end generate; ").repeated(Depth) +
                                      "end;"
                               << Depth + 1;
    QTest::newRow("generates without an end") << begin + generates << Depth + 1;
    QTest::newRow("blocks") << begin + QByteArray("b : block begin ").repeated(Depth) +
                                   QByteArray("end block; ").repeated(Depth) + "end;"
                            << Depth + 1;
    QTest::newRow("parentheses") << begin + "u : c port map (" + QByteArray(Depth, '(') +
                                        QByteArray(Depth, ')') + "); end;"
                                 << 1;
    QTest::newRow("subprograms") << "package body p is " +
                                        QByteArray("procedure f is ").repeated(Depth) +
                                        QByteArray("begin end; ").repeated(Depth) + "end;"
                                 << 1;
    QTest::newRow("packages") << "package p is " + QByteArray("package q is ").repeated(Depth) +
                                     QByteArray("end; ").repeated(Depth) + "end;"
                              << 1;
    QTest::newRow("loops") << begin + "process begin " +
                                  QByteArray("for i in x loop ").repeated(Depth) +
                                  QByteArray("end loop; ").repeated(Depth) + "end process; end;"
                           << 1;
}

void TestVhdlScan::nestsToAnyDepth()
{
    QFETCH(QByteArray, text);
    const VhdlFile file = scanVhdl(text);
    QCOMPARE(file.units.size(), 1);
    QTEST(file.units.last().scopes.size(), "scopes");
    QCOMPARE(file.units.last().complete, text.endsWith("end;"));
}

/// A text that ends anywhere is scanned too, and all ranges lie in it.
void TestVhdlScan::survivesEveryPrefix()
{
    const QByteArray whole =
        "library l; use l.p.all; entity e is generic (g : t := (1, 2)); port (a : in bit); end; "
        "architecture a of e is type r is record a : bit; end record; component c is port (a : "
        "bit); end component; for all : c use entity w.c(a) port map (a => b); function f (a : "
        "t) return t is begin end; begin u : entity w.c(a) generic map (1) port map (a => open); "
        "p : process begin end process; b : block is port (a : bit); port map (b); begin end "
        "block; g : case n generate when x : 1 => end x; end generate; h : if y : c generate end "
        "y; elsif d generate else generate end generate; end a; configuration c of e is for a for "
        "all : c use open; end for; end for; end; context d is library e; end; package q is new w "
        "generic map (a);";
    for (int size = 0; size <= whole.size(); ++size) {
        const QByteArray text = whole.left(size);
        const VhdlFile file = scanVhdl(text);
        for (const VhdlUnit &unit : file.units) {
            QVERIFY(unit.range.begin <= unit.range.end && unit.range.end <= size);
            for (const VhdlScope &scope : unit.scopes)
                QVERIFY(scope.range.begin <= scope.range.end && scope.range.end <= size);
            for (const VhdlInstance &instance : unit.instances)
                QVERIFY(instance.range.begin <= instance.range.end && instance.range.end <= size);
        }
    }
    QCOMPARE(scanVhdl(whole).units.size(), 5);
}

void TestVhdlScan::takesLinearTime_data()
{
    QTest::addColumn<QByteArray>("begin");
    QTest::addColumn<QByteArray>("piece");
    const auto row = [](const char *name, const char *begin, const char *piece) {
        QTest::newRow(name) << QByteArray(begin) << QByteArray(piece);
    };
    row("entities", "", "entity e is port (a : in bit); end; ");
    row("entities without ends", "", "entity e is port (a : ");
    row("context clauses", "", "library a; use a.b; ");
    row("library names", "library ", "a, ");
    row("components of a name", "use ", "a.");
    row("ports", "entity e is port (", "a : in bit; ");
    row("names of ports", "entity e is port (", "a, ");
    row("signals", "architecture a of e is ", "signal s : bit; ");
    row("names of signals", "architecture a of e is signal ", "s, ");
    row("instances", "architecture a of e is begin ", "u : c port map (a, b => c); ");
    row("associations", "architecture a of e is begin u : c port map (", "a => b, ");
    row("actuals", "architecture a of e is begin u : c port map (", "(a ");
    row("formals", "architecture a of e is begin u : c port map (", "a(b) ");
    row("labels", "architecture a of e is begin ", "a : ");
    row("generates", "architecture a of e is begin ", "g : if c generate ");
    row("alternatives", "architecture a of e is begin g : if c generate ", "elsif c generate ");
    row("choices", "architecture a of e is begin g : case c generate ", "when 1 => ");
    row("ends of generates", "architecture a of e is begin ", "end generate; ");
    row("blocks", "architecture a of e is begin ", "b : block begin ");
    row("records", "architecture a of e is type r is record ", "a : b; ");
    row("types", "architecture a of e is ", "type r is record ");
    row("subprograms", "architecture a of e is ", "function f return t is ");
    row("parentheses", "architecture a of e is ", "function f (");
    row("bindings", "architecture a of e is ", "for all : c use entity w.c(a); ");
    row("labels of bindings", "architecture a of e is for ", "a, ");
    row("levels of a configuration", "configuration c of e is ", "for a ");
    row("packages", "package p is ", "package p is ");
    row("processes", "architecture a of e is begin ", "process begin ");
    row("strings", "architecture a of e is ", "\"");
}

void TestVhdlScan::takesLinearTime()
{
    QFETCH(QByteArray, begin);
    QFETCH(QByteArray, piece);
    const auto nanoseconds = [&](int size) {
        const QByteArray text = begin + piece.repeated(size / piece.size());
        return TarnTest::leastNanoseconds([&text] { scanVhdl(text); });
    };
    // Sixteen times the text: quadratic time would be 256-fold.
    const qint64 small = nanoseconds(20000);
    const qint64 large = nanoseconds(320000);
    QVERIFY2(large < small * 128 + 2000000,
             qPrintable(QStringLiteral("%1 ns and %2 ns").arg(small).arg(large)));
}

TARN_TEST_MAIN(TestVhdlScan)
#include "tst_vhdlscan.moc"
