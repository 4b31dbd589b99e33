// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/verilog/modulescan.h>

#include <support/processortime.h>
#include <support/testcase.h>

#include <QApplication>
#include <QTest>

#include <random>

using namespace NETWEIR::Internal;

namespace {

QByteArray instantiationText(const Instantiation &instantiation)
{
    QByteArray text = instantiation.module + ' ';
    if (!instantiation.parameters.isEmpty())
        text += "#(" + instantiation.parameters.join(' ') + ") ";
    if (instantiation.positionalParameters > 0)
        text += '#' + QByteArray::number(instantiation.positionalParameters) + ' ';
    text += instantiation.instances.join(',');
    if (!instantiation.unnamed.isEmpty())
        text += QByteArray::number(instantiation.unnamed.size()) + " unnamed ";
    if (instantiation.multidimensional.line > 0)
        text += "[][]";
    if (instantiation.bare)
        return text + " bare";
    text += '(' + instantiation.pins.join(' ') + ')';
    if (instantiation.positionalPins > 0)
        text += QByteArray::number(instantiation.positionalPins);
    return text + (instantiation.conditional ? " if" : "");
}

/// One line per unit, followed by its instantiations.
QString scanText(const QByteArray &source, bool systemVerilog = true)
{
    static const char *const kinds[] = {"module", "interface", "program", "primitive", "checker"};
    ModuleScan scan;
    scanModules(source, 0, systemVerilog, &scan);
    QByteArray text;
    for (const DesignUnit &unit : qAsConst(scan.units)) {
        text +=
            QByteArray(unit.nested ? "nested " : "") + kinds[unit.kind] + ' ' + unit.name + '\n';
        for (const Instantiation &instantiation : unit.instantiations)
            text += "  " + instantiationText(instantiation) + '\n';
        if (!unit.tiedNets.isEmpty())
            text += "  tied " + unit.tiedNets.join(' ') + '\n';
        for (const Defparam &defparam : unit.defparams)
            text += "  defparam " + defparam.instance + ' ' + defparam.parameter + '\n';
    }
    for (const Instantiation &binding : qAsConst(scan.bindings))
        text += "bind " + instantiationText(binding) + '\n';
    return QString::fromUtf8(text + (scan.balanced ? "" : "unbalanced\n"));
}

/// @p text after up to six changes at random places.
QByteArray damaged(QByteArray text, std::mt19937 *random)
{
    const QByteArray bits("(){}[];:,.#*\"\\/`'\n@=?");
    const char *const words[] = {"module ", "endmodule ", "begin ", "end ",  "class ", "case ",
                                 "bind ",   "function ",  "else ",  "/*",    "*/",     "(*",
                                 "*)",      "defparam ",  "if ",    "fork ", "\\",     "`line "};
    const auto below = [random](int limit) { return int((*random)() % unsigned(limit)); };
    for (int change = below(6); change >= 0; --change) {
        const int at = below(text.size());
        switch (below(5)) {
        case 0:
            text.remove(at, below(40));
            break;
        case 1:
            text.insert(at, bits[below(bits.size())]);
            break;
        case 2:
            text[at] = char(below(255) + 1);
            break;
        case 3:
            text.insert(at, words[below(int(sizeof(words) / sizeof(*words)))]);
            break;
        default:
            text.insert(at, text.mid(below(text.size()), below(200)));
        }
    }
    return text;
}

} // namespace

class TestModuleScan : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void findsInstantiations_data();
    void findsInstantiations();
    void keepsWordsOfTheOtherLanguageApart_data();
    void keepsWordsOfTheOtherLanguageApart();
    void findsUnits_data();
    void findsUnits();
    void seesUnbalancedText_data();
    void seesUnbalancedText();
    void findsArrays();
    void notesTheLinesOfAStatement();
    void survivesDamagedText();
    void takesLinearTime_data();
    void takesLinearTime();
};

void TestModuleScan::findsInstantiations_data()
{
    QTest::addColumn<QByteArray>("body"); // Of a module m.
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *body, const char *expected) {
        QTest::newRow(name) << QByteArray(body) << QString::fromLatin1(expected);
    };
    row("positional", "s u(a, b);", "s u()2");
    row("named", "s u(.a(x), .b(y[3:0]), .c());", "s u(a b c)");
    row("implicit", "s u(.a, .*);", "s u(a)");
    row("no connections", "s u();", "s u()");
    row("left out", "s u(a,,b);", "s u()3");
    row("first left out", "s u(,a);", "s u()2");
    row("expressions", "s u(f(a, b), {c, d}, e ? g : h, i[(1+2)]);", "s u()4");
    row("stray comma", "s u(.a(x), );", "s u(a)");
    row("several instances", "s u(a), v(.p(b)), w(a, b, c);", "s u,v,w(p)3");
    row("array", "s u[3:0](.a(b));", "s u(a)");
    row("two-dimensional array", "s u[3:0][1:0](.a(b));", "s u[][](a)");
    row("two-dimensional array of several", "s u[3:0](a), v[2][3](a), w(a);", "s u,v,w[][]()1");
    row("two-dimensional array by mistake", "s u [3:0] [1:0;", "");
    row("switch", "tran (a, b);", "tied a b");
    row("named switches", "rtran t1(a, b[c]), t2 [d:0] ({e, f}, g[h:0]); s u(a);",
        "s u()1|tied a b e f g");
    row("controlled switches", "tranif1 #(1, x) (a, b, c); rtranif0 #2 t(d, {e, f}, g & h);",
        "tied a b d e f");
    row("switches under conditions",
        "generate if (P) tran (a, b); else begin tranif0 (c.d, e, f); end s u(a); endgenerate",
        "s u()1|tied a b c d e");
    row("damaged switches", "tran (a, (b; s u(a);", "tied a b s u a");
    row("switch by an escaped name", "tran (\\a/1 , \\b );", "tied a/1 b");
    row("alias", "alias a = b[c] = {d, e[1:0]} = f.g; s u(a);", "s u()1|tied a b d e f g");
    row("named parameters", "s #(.W(8), .D({1, 2})) u(.a(b));", "s #(W D) u(a)");
    row("positional parameters", "s #(8, (1, 2)) u(a);", "s #2 u()1");
    row("one parameter", "s #8 u(a);", "s #1 u()1");
    row("empty parameters", "s #() u(a);", "s u()1");
    row("delay with a fraction", "s #0.1 u(a, b);", "s #1 u()2");
    row("strengths", "s (strong0, weak1) #2 u(a);", "s #1 u()1");
    row("without a name", "s (a, b);", "s 1 unnamed ()2");
    row("several without a name", "s #(1, 2) (a, f(b)), u(c), (d);", "s #2 u2 unnamed ()2");
    row("label of a generated case that looks alike",
        "case (P) f(1): s u(a); g(1), h(2): t v(b); endcase", "s u()1 if|t v()1 if");
    row("attribute", "(* keep = \"u(\" *) s u(.a(b));", "s u(a)");
    row("attribute of a pin", "s u((* x *) .a(b), (* y *) c);", "s u(a)");
    row("grouped expression as pin", "s u((a), (b));", "s u()2");
    row("escaped names", "\\s/1 \\u.2 (.\\p[0] (x));", "s/1 u.2(p[0])");
    row("keyword as escaped name", "\\module \\end (a);", "module end()1");
    row("line comment", "// s u(a);\n", "");
    row("block comment", "/* s u(a); */ t v(b);", "t v()1");
    row("comment within", "s /* ; */ u // (\n (.a(b));", "s u(a)");
    row("string", "initial $display(\"; s u(a);\"); t v(b);", "t v()1");
    row("escaped quote", "initial $display(\"\\\"; s u(a);\"); t v(b);", "t v()1");
    row("generate if", "generate if (P) s u(a); else t v(b); endgenerate", "s u()1 if|t v()1 if");
    row("if and else blocks", "if (P) begin s u(a); end else if (Q) begin : g t v(b); end w x(c);",
        "s u()1 if|t v()1 if|w x()1");
    row("generate for", "for (genvar i = 0; i < 4; i++) begin : g s u(a[i]); end t v(b);",
        "s u()1 if|t v()1");
    row("generate case",
        "case (P) 0: s u(a); 1, 2: begin t v(b); end A: w x(c); B, C: y z(d); "
        "4'b1??0: k l(e); default: m n(f); endcase o p(g);",
        "s u()1 if|t v()1 if|w x()1 if|y z()1 if|k l()1 if|m n()1 if|o p()1");
    row("case of a package constant", "case (P) k::A: s u(a); endcase", "s u()1 if");
    row("block without condition", "begin : b s u(a); end", "s u()1");
    row("block within a condition", "if (P) begin begin s u(a); end end", "s u()1 if");
    row("always", "always @(posedge c) begin : l f(a); if (b) g(c); else h(d); end s u(a);",
        "s u()1");
    row("always without block", "always @(posedge c) if (a) b <= c; else d <= e; s u(a);",
        "s u()1");
    row("call after a delay", "initial #d f(a); s u(a);", "s u()1");
    row("call after an event", "initial @e f(a); s u(a);", "s u()1");
    row("else of the generate", "if (P) always @* a = b; else s u(a);", "s u()1 if");
    row("else of the process", "if (P) always @* if (x) a = b; else c = d; else s u(a);",
        "s u()1 if");
    row("case in a process", "always @* case (a) 0: f(b); default: begin g(c); end endcase s u(a);",
        "s u()1");
    row("fork in a process", "initial fork f(a); begin g(b); end join s u(a);", "s u()1");
    row("disable fork", "initial begin disable fork; wait fork; end s u(a);", "s u()1");
    row("random sequence in a process", "initial randsequence (a) a: b c; endsequence s u(a);",
        "s u()1");
    row("label in a process", "initial begin : l f(a); end : l s u(a);", "s u()1");
    row("wait", "initial wait (a) f(b); s u(a);", "s u()1");
    row("function", "function f; input a; begin : l g(a); end endfunction s u(a);", "s u()1");
    row("task", "task automatic f(input a); g h; g(a); endtask : f s u(a);", "s u()1");
    row("imported function", "import \"DPI-C\" function int f(input int a); s u(a);", "s u()1");
    row("class", "class k; extern function new(); class n; endclass endclass : k s u(a);",
        "s u()1");
    row("forward class", "typedef class k; s u(a);", "s u()1");
    row("virtual class", "virtual class k; endclass s u(a);", "s u()1");
    row("virtual interface", "virtual i v; s u(a);", "s u()1");
    row("declarations", "wire a, b; reg [3:0] c = f(d); integer e; s u(a);", "s u()1");
    row("user types", "t x; t y = f(a), z; k::t w; t [3:0] v; s u(a);", "t x bare|s u()1");
    row("struct", "struct packed { logic a; t b; } s1; typedef enum { A, B } e; s u(a);", "s u()1");
    row("without parentheses", "s u;", "s u bare");
    row("gates", "and (a, b, c); nand #(1, 2) g(a, b, c); bufif0 (a, b, c); s u(a);", "s u()1");
    row("assertion", "assert property (@(posedge c) a |-> b) else $error(\"x\"); s u(a);",
        "s u()1");
    row("labelled assertion", "l: assert property (p); s u(a);", "s u()1");
    row("property", "property p; @(posedge c) a; endproperty s u(a);", "s u()1");
    row("clocking", "clocking k @(posedge c); input a; endclocking s u(a);", "s u()1");
    row("default clocking", "default clocking k @(posedge c); endclocking s u(a);", "s u()1");
    row("default clocking by name", "default clocking k; s u(a);", "s u()1");
    row("global clocking", "global clocking k @(posedge c); endclocking s u(a);", "s u()1");
    row("default disable", "default disable iff (r); s u(a);", "s u()1");
    row("covergroup", "covergroup g @(posedge c); coverpoint a; endgroup g x = new; s u(a);",
        "s u()1");
    row("specify", "specify (a => b) = 1; endspecify s u(a);", "s u()1");
    row("system task", "$error(\"x\"); s u(a);", "s u()1");
    row("defparam", "defparam u.A = 1, v.w[2].B = {a, b}; s u(a);",
        "s u()1|defparam u A|defparam w B");
    row("undefined macro", "`FOO s u(a);", "s u()1");
    row("numbers", "wire [7:0] a = 8 'h FF; wire b = 'b1; wire c = '1; s u(a);", "s u()1");
    row("cast", "wire a = t'(b); s u(a);", "s u()1");
    row("assignment pattern", "wire a = '{default: 0}; s u(a);", "s u()1");
}

void TestModuleScan::findsInstantiations()
{
    QFETCH(QByteArray, body);
    QFETCH(QString, expected);
    if (!expected.isEmpty())
        expected = QStringLiteral("  ") +
                   expected.replace(QLatin1Char('|'), QStringLiteral("\n  ")) + QLatin1Char('\n');
    QCOMPARE(scanText("module m; " + body + " endmodule"), QStringLiteral("module m\n") + expected);
    // The next module is found whatever the body contains.
    QCOMPARE(scanText("module m; " + body + "\nendmodule module after; endmodule"),
             QStringLiteral("module m\n") + expected + QStringLiteral("module after\n"));
}

void TestModuleScan::keepsWordsOfTheOtherLanguageApart_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<bool>("systemVerilog");
    QTest::addColumn<QString>("expected");
    const char *const program = "module m; program interface(a); class checker(b); endmodule";
    QTest::newRow("Verilog") << QByteArray(program) << false
                             << "module m\n  program interface()1\n  class checker()1\n";
    QTest::newRow("keywords of 2001")
        << QByteArray("`begin_keywords \"1364-2001\"\nmodule m; bit logic(a); endmodule\n"
                      "`end_keywords\nmodule n; bit b; s u(a); endmodule")
        << true << "module m\n  bit logic()1\nmodule n\n  s u()1\n";
    QTest::newRow("keywords of 2017")
        << QByteArray("`begin_keywords \"1800-2017\"\ninterface i; endinterface\n`end_keywords\n"
                      "module m; interface u(a); endmodule")
        << false << "interface i\nmodule m\n  interface u()1\n";
}

void TestModuleScan::keepsWordsOfTheOtherLanguageApart()
{
    QFETCH(QByteArray, source);
    QFETCH(bool, systemVerilog);
    QFETCH(QString, expected);
    QCOMPARE(scanText(source, systemVerilog), expected);
}

void TestModuleScan::findsUnits_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *source, const char *expected) {
        QTest::newRow(name) << QByteArray(source) << QString::fromLatin1(expected);
    };
    row("empty", "", "");
    row("order", "module b; endmodule module a; endmodule", "module b\nmodule a\n");
    row("macromodule", "macromodule m; endmodule", "module m\n");
    row("lifetime", "module automatic m; endmodule", "module m\n");
    row("escaped", "module \\m/1 ; endmodule", "module m/1\n");
    row("end label", "module m; endmodule : m module n; endmodule", "module m\nmodule n\n");
    row("ports",
        "module m #(parameter type T = struct packed { int a; }) (i.mp p, input T t);"
        " s u(t); endmodule",
        "module m\n  s u()1\n");
    row("import in the header",
        "module m import p::*, q::r; #(parameter A = 1) (input t a);"
        " s u(a); endmodule",
        "module m\n  s u()1\n");
    row("interface", "interface i(input c); modport mp(input a); k n(c); endinterface",
        "interface i\n  k n()1\n");
    row("interface class", "interface class k; endclass module m; endmodule", "module m\n");
    row("program", "program p; initial f(a); endprogram", "program p\n");
    row("primitive",
        "primitive p(o, a); output o; table 0 : 1; endtable endprimitive"
        " module m; endmodule",
        "primitive p\nmodule m\n");
    row("checker", "checker k(a); s u(a); endchecker module m; endmodule", "checker k\nmodule m\n");
    row("package",
        "package p; function f; endfunction class k; endclass endpackage : p"
        " module m; endmodule",
        "module m\n");
    row("config", "config k; design m; endconfig module m; endmodule", "module m\n");
    row("nested", "module m; module n; s u(a); endmodule n v(b); endmodule",
        "module m\n  n v()1\nnested module n\n  s u()1\n");
    row("extern", "extern module x(input a); module m; endmodule", "module m\n");
    row("timescale in front", "`timescale 1ns / 1 ps module m; endmodule", "module m\n");
    row("other directives",
        "`default_nettype none\n`pragma protect module x;\n`resetall\n`celldefine\n"
        "`unconnected_drive pull1\nmodule m; endmodule",
        "module m\n");
    row("functions outside",
        "function f; endfunction task t; endtask typedef int i;"
        " module m; endmodule",
        "module m\n");
    row("bind", "module m; endmodule bind m s u(.a(b)); bind m.n[1] : i, j t #(.P(1)) v(a);",
        "module m\nbind s u(a) if\nbind t #(P) v()1 if\n");
    row("bind within", "module m; bind n s u(a); t v(b); endmodule",
        "module m\n  t v()1\nbind s u()1 if\n");
    row("in comments and strings",
        "// module a; endmodule\n/* module b; endmodule */"
        " module m; initial $display(\"module c;\"); endmodule",
        "module m\n");
}

void TestModuleScan::findsUnits()
{
    QFETCH(QByteArray, source);
    QFETCH(QString, expected);
    QCOMPARE(scanText(source), expected);
}

void TestModuleScan::seesUnbalancedText_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::newRow("no end") << QByteArray("module m; s u(a);");
    QTest::newRow("end too many") << QByteArray("module m; endmodule endmodule");
    QTest::newRow("misspelt") << QByteArray("modul m; endmodule");
    QTest::newRow("no name") << QByteArray("module (a); endmodule");
}

void TestModuleScan::seesUnbalancedText()
{
    QFETCH(QByteArray, source);
    QVERIFY(scanText(source).endsWith(QLatin1String("unbalanced\n")));
}

void TestModuleScan::findsArrays()
{
    const QByteArray source("module m; a u (x), v [1:0] (.y(z)) , \\w+ [N] [2] ; endmodule");
    ModuleScan scan;
    scanModules(source, 0, true, &scan);
    QByteArrayList arrays;
    for (const InstanceArray &array : scan.units.first().instantiations.first().arrays) {
        const QByteArray range = source.mid(array.range.begin, array.range.end - array.range.begin);
        arrays += array.name + '|' + range.trimmed() + '|' + source.mid(array.end);
    }
    QCOMPARE(arrays,
             QByteArrayList({"v|[1:0]| , \\w+ [N] [2] ; endmodule", "w+|[N] [2]| ; endmodule"}));
}

void TestModuleScan::notesTheLinesOfAStatement()
{
    ModuleScan scan;
    scanModules("\nmodule m;\n/* a\n b */\ns\n u(.a(b),\n .c(\"x\\\ny\"));\nendmodule\n", 7, false,
                &scan);
    QCOMPARE(scan.units.size(), 1);
    QCOMPARE(scan.units[0].line.text, 7);
    QCOMPARE(scan.units[0].line.line, 2);
    QCOMPARE(scan.units[0].instantiations[0].first.line, 5);
    QCOMPARE(scan.units[0].instantiations[0].last.line, 8);
}

/// Cuts, doubles and overwrites parts of a source at random, in the same way in each run. The scan
/// ends and finds no more units than the text has keywords.
void TestModuleScan::survivesDamagedText()
{
    const QByteArray source =
        "`timescale 1ns/1ps\nmodule top #(parameter P = 1)(input clk, output [7:0] \\q[1] );\n"
        "wire [3:0] a; (* keep *) sub #(.W(4)) u0 (.c(clk), .d({a, 4'b0})), u1 [1:0] (a,,b);\n"
        "generate if (P) begin : g KX_JTAG j(); end else case (P) 1: s v(a); default: t w(b);\n"
        "endcase endgenerate always @(posedge clk) begin : l if (a) f(a); else g(\"x;\\\"\"); end\n"
        "defparam u0.W = 3; function f; input x; f = x; endfunction bind s m n(.x(1));\n"
        "class k; endclass property p; @(posedge clk) a; endproperty assert property (p);\n"
        "default clocking c @(posedge clk); endclocking primitive q(o, i); "
        "endprimitive\nendmodule\n";
    std::mt19937 random(20); // NOLINT: the same at each run.
    QElapsedTimer timer;
    timer.start();
    for (int round = 0; round < 4000; ++round) {
        const QByteArray text = damaged(source, &random);
        ModuleScan scan;
        scanModules(text, 0, round % 2 == 0, &scan);
        // Each unit begins with a keyword.
        const int keywords = text.count("module") + text.count("primitive") +
                             text.count("interface") + text.count("program") +
                             text.count("checker");
        QVERIFY2(scan.units.size() <= keywords, text.constData());
        for (const DesignUnit &unit : qAsConst(scan.units))
            QVERIFY2(text.contains(unit.name), text.constData());
    }
    QVERIFY2(timer.elapsed() < 60000, "damaged text takes too long");
}

void TestModuleScan::takesLinearTime_data()
{
    QTest::addColumn<QByteArray>("begin");
    QTest::addColumn<QByteArray>("piece");
    const auto row = [](const char *name, const char *begin, const char *piece) {
        QTest::newRow(name) << QByteArray(begin) << QByteArray(piece);
    };
    row("modules", "", "module m; s u(.a(b)); endmodule\n");
    row("open parentheses", "module m; s u(", "(");
    row("attributes", "module m; s u(", "(*");
    row("parentheses with stars", "module m; ", "( * ");
    row("blocks", "module m; ", "begin ");
    row("modules in modules", "", "module m; ");
    row("classes", "", "class k; ");
    row("identifiers", "module m; ", "a ");
    row("labels", "module m; ", "a: ");
    row("bind", "module m; ", "bind a ");
    row("bind list", "bind ", "a, ");
    row("bind instances", "bind a ", "b (c), ");
    row("bind words", "bind ", "a b c d ");
    row("quotes", "module m; ", "\"");
    row("backslashes", "module m; ", "\\");
    row("comments", "module m; ", "/* ");
    row("directives", "module m; ", "`a ");
    row("else", "module m; always ", "if (a) b; else ");
    row("hashes", "module m; a ", "# (");
    row("switches", "module m; ", "tran (a, b), ");
    row("terminals", "module m; tran (", "a, {");
    row("indexes of terminals", "module m; tran (", "a [");
    row("aliases", "module m; alias a ", "= b [c] ");
    row("defparams", "module m; defparam ", "a.b = c, ");
}

void TestModuleScan::takesLinearTime()
{
    QFETCH(QByteArray, begin);
    QFETCH(QByteArray, piece);
    const auto nanoseconds = [&](int size) {
        const QByteArray text = begin + piece.repeated(size / piece.size());
        return TarnTest::leastNanoseconds([&text] {
            ModuleScan scan;
            scanModules(text, 0, true, &scan);
        });
    };
    // Sixteen times the text: quadratic time would be 256-fold.
    const qint64 small = nanoseconds(20000);
    const qint64 large = nanoseconds(320000);
    QVERIFY2(large < small * 128 + 2000000,
             qPrintable(QStringLiteral("%1 ns and %2 ns").arg(small).arg(large)));
}

TARN_TEST_MAIN(TestModuleScan)
#include "tst_modulescan.moc"
