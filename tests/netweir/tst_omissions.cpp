// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designfixture.h"
#include "netlisttext.h"
#include "toolscript.h"

#include <support/testcase.h>

#include <QApplication>
#include <QRegularExpression>
#include <QTest>

using namespace NETWEIR;
using TarnTest::DesignFixture;
using TarnTest::ToolScript;

/// Designs with constructs that the elaborator cannot read: the rest opens, and messages name what
/// is left out.
class TestOmissions : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theRestOpens_data();
    void theRestOpens();
    void usersInOtherFilesGoToo();
    void whatReachesIntoAModuleGoesToo();
    void faultsStayErrors_data();
    void faultsStayErrors();
    void comeAfterTheMacroOfTheTool();
    void endAfterSomeRuns();
    void goFromTheSmallestItemToTheModule();
    void goTogether();
};

void TestOmissions::theRestOpens_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QStringList>("leftOut"); // "LINE: KIND NAME"
    QTest::addColumn<QString>("netlist");
    const auto row = [](const char *name, const char *source, const QStringList &leftOut,
                        const char *netlist) {
        QTest::newRow(name) << QByteArray(source) << leftOut << QString::fromUtf8(netlist).mid(1);
    };
    const char flop[] = R"(
top : top
    clk O
    a O
    b O
    q O
    w .
)";
    row("assertions", R"(module top(input clk, a, b, output reg q); wire w;
a1: assert property (@(posedge clk) a |-> ##1 b) else $error("no");
cover property (@(posedge clk) a[*3] ##1 b);
always @(posedge clk) q <= a;
(* x *) assume property (@(posedge clk) b[->1] ##1 a);
endmodule)",
        {"2: assertion", "3: assertion", "5: assertion"}, flop);
    row("an assertion in a block", R"(module top(input clk, a, b, output reg q); wire w;
always @(posedge clk) begin q <= a;
  if (a) l: assert property (a |-> ##1 b); else q <= 0;
end
endmodule)",
        {"3: assertion"}, flop);
    row("assertion that writes by its actions",
        R"(module top(input clk, a, b, output reg q); wire w;
assert property (@(posedge clk) w |-> ##1 p(w)) $display("%d", w); else q <= a;
property p(x); x; endproperty
endmodule)",
        {"2: assertion"}, flop);
    row("property and what uses it", R"(module top(input clk, a, b, output reg q); wire w;
property p; @(posedge clk) a |-> ##1 b; endproperty : p
property p2; p; endproperty
a1: assert property (p);
assert property (p2);
always @(posedge clk) q <= a;
endmodule)",
        {"2: property p", "3: property p2", "4: assertion", "5: assertion"}, flop);
    row("sequence", R"(module top(input clk, a, b, output reg q); wire w;
sequence s; a ##[1:3] b; endsequence
assert property (@(posedge clk) s |=> q);
always @(posedge clk) q <= a;
endmodule)",
        {"2: sequence s", "3: assertion"}, flop);
    row("covergroup", R"(module top(input clk, a, b, output reg q); wire w;
covergroup cg @(posedge clk); coverpoint a { bins x = {1}; } endgroup
cg c = new();
always @(posedge clk) begin q <= a; c.sample(); end
endmodule)",
        {"2: covergroup cg", "3: statement c", "4: statement"}, flop);
    row("what depends on something in a condition",
        R"(module top(input clk, a, b, output reg q); wire w;
covergroup c1; coverpoint a; endgroup
c1 x1 = new;
always @(posedge clk) begin q <= a; if (x1 != null) x1.sample(); end
final $display("%f", x1.get_coverage());
endmodule)",
        {"2: covergroup c1", "3: statement x1", "4: statement", "4: procedural block",
         "5: procedural block"},
        flop);
    row("let", R"(module top(input clk, a, b, output reg q); wire w;
let both(x, y) = x & y;
always @(posedge clk) q <= both(a, b);
endmodule)",
        {"2: let both", "3: procedural block"}, flop);
    row("default disable", R"(module top(input clk, a, b, output reg q); wire w;
default clocking cb @(posedge clk); endclocking
default disable iff (a);
assert property (a |-> b);
always @(posedge clk) q <= a;
endmodule)",
        {"3: default"}, flop);
    row("checker", R"(module top(input clk, a, b, output reg q); wire w;
checker c(input x); assert property (@(posedge clk) x); endchecker
c c0(w);
always @(posedge clk) q <= a;
endmodule)",
        {"2: checker c", "3: statement c0"}, flop);
    row("a block with a construct that the grammar lacks",
        R"(module top(input clk, a, b, output reg q); wire w;
initial begin expect (@(posedge clk) a ##1 b); q = 0; end
endmodule)",
        {"2: assertion"}, flop);
    row("randomized", R"(module top(input clk, a, b, output reg q); wire w;
initial begin std::randomize(q) with { q < 3; }; end
always @(posedge clk) q <= a;
endmodule)",
        {"2: procedural block"}, flop);
    row("class", R"(package p; class k; function void f(); int x, y; void'(std::randomize(x) with
{ x < 3; }); endfunction endclass endpackage
module top(input clk, a, b, output reg q); wire w; import p::*;
k i = new; initial i.f();
always @(posedge clk) q <= a;
endmodule)",
        {"1: class k", "4: statement i", "4: statement"}, flop);
    row("patterns", R"(module top(input clk, a, b, output reg q); wire w;
typedef union tagged packed { logic A; logic B; } u_t; u_t v;
always @(posedge clk) case (v) matches tagged A .n : q <= n; tagged B .n : q <= 0; endcase
endmodule)",
        {"3: procedural block"}, R"(
top : top
    clk O
    a O
    b O
    q O
    w .
    v .
)");
    row("a procedural block", R"(module top(input [0:0] v, output [1:0] o);
  m #(.N(1)) u(.v(v), .sel(o));
endmodule
module m #(parameter N = 4) (input [N-1:0] v, output reg [N*$clog2(N)-1:0] sel);
  localparam W = $clog2(N);
  integer s, c; reg [7:4] x; reg [0:3] y; wire z; reg [3:0] m [0:1];
  always @* begin
    sel = 0; c = 0; x[5] = 1; {y[1:2], x[7]} = 3'd0;
    if (N == 1) sel = 0; else
    for (s = 0; s < N; s = s + 1) begin if (v[s]) begin sel[c*W +: W] = s; c = c + 1; end end
  end
endmodule)",
        {"7: procedural block"}, R"(
top : top
    v[0:0] O
    o[1:0] OO
    u : m
        z .
        v[0:0] O
        sel[-1:0] OO
        s[31:0] OOOOOOOOOOOOOOOOOOOOOOOOOOOOOOOO
        c[31:0] OOOOOOOOOOOOOOOOOOOOOOOOOOOOOOOO
        x[7:4] O.O.
        y[0:3] .OO.
        m[0][3:0] ....
        m[1][3:0] ....
)");
    row("a module", R"(module top(input clk, input [7:0] a, output [7:0] q); wire w;
sub u(clk, a, q);
other o(.a(w));
endmodule
module sub(input clk, input [7:0] a, output reg [7:0] q);
 function [7:0] f(input [7:0] n); f = n == 0 ? 1 : n * f(n - 1); endfunction
 localparam X = f(3);
 wire [X:0] y;
 other o(.a(y[0]));
endmodule
module other(input a); endmodule)",
        {"5: module sub"}, R"(
top : top
    clk O
    w .
    a[7:0] OOOOOOOO
    q[7:0] OOOOOOOO
    o : other
        a .
)");
    row("an assignment of the top", R"(module top(input a, output [1:0] q); wire [3:0] w;
 typedef enum { A, B, C } e_t; e_t e, f;
 assign w[2] = a, {q[1], w[0]} = e.next(a);
 assign f = A;
endmodule)",
        {"3: assignment"}, R"(
top : top
    a O
    q[1:0] O.
    w[3:0] .O.O
    e[31:0] ................................
    f[31:0] OOOOOOOOOOOOOOOOOOOOOOOOOOOOOOOO
)");
    row("what writes to an interface", R"(interface bus; logic v, r, n; endinterface
module top(input clk); bus b(); bus c(); sub u(b); typedef struct packed { logic x, y; } s_t; s_t s, t;
initial begin randsequence(main) main : { c.r = 1; }; endsequence c.v = 1; s.x = 1; end
endmodule
module sub(bus p);
always @(posedge p.n iff p.r) p.v <= 1;
endmodule)",
        {"3: procedural block", "6: procedural block"}, R"(
top : top
    clk O
    s.x O
    s.y O
    t.x .
    t.y .
    b : bus
        v O
        r .
        n .
    c : bus
        v O
        r O
        n .
    u : sub
)");
    row("configuration", R"(config cfg; design top; default liblist work; endconfig
module top(input clk, a, b, output reg q); wire w;
always @(posedge clk) q <= a;
endmodule)",
        {"1: config cfg"}, flop);
    row("events that the elaborator does not find",
        R"(module top(input clk, a, b, output reg q); wire w;
initial begin fork : f #1; join_none disable f; end
always @(posedge clk) q <= a;
endmodule)",
        {"2: procedural block"}, flop);
}

void TestOmissions::theRestOpens()
{
    QFETCH(QByteArray, source);
    QFETCH(QStringList, leftOut);
    QFETCH(QString, netlist);
    DesignFixture design;
    design.add(QStringLiteral("a.sv"), source);
    design.findModules();
    QCOMPARE(design.firstError(), QString());
    QStringList found = design.messages;
    found.replaceInStrings(QRegularExpression(QStringLiteral("^WARNING: left out: .*/a\\.sv:([0-9]+"
                                                             ": [^:]*): .+$")),
                           QStringLiteral("\\1"));
    QVERIFY2(found == leftOut, qPrintable(design.messages.join(QLatin1Char('\n'))));
    QCOMPARE(debugLines(), design.messages);
    QVERIFY(design.buildNetlist());
    QCOMPARE(TarnTest::netlistText(design.netlist->top()), netlist);
}

void TestOmissions::usersInOtherFilesGoToo()
{
    DesignFixture design;
    design.add(QStringLiteral("a.sv"),
               "module top(input clk, a, output logic q); import p::*;\n"
               "cg c = new();\nalways_ff @(posedge clk) begin q <= a; c.sample(); end\n"
               "assert property (@(posedge clk) p::chk(a));\nassert property (later(a));\n"
               "always_comb assert (both(a, q));\nendmodule\n");
    design.add(QStringLiteral("p.sv"),
               "package p;\ncovergroup cg; endgroup\nproperty chk(x); ##1 x; endproperty\n"
               "sequence later(x); ##1 x; endsequence\nlet both(x, y) = x & y;\nendpackage\n");
    QVERIFY2(design.extract(), qPrintable(design.messages.join(QLatin1Char('\n'))));
    QCOMPARE(TarnTest::netlistText(design.netlist->top()),
             QStringLiteral("top : top\n    clk O\n    a O\n    q O\n"));
}

void TestOmissions::whatReachesIntoAModuleGoesToo()
{
    DesignFixture design;
    design.add(QStringLiteral("a.sv"),
               "module top(input clk, a, output q, r);\nsub u(a, q);\nassign r = u.n[0];\n"
               "initial u.n = 1;\nendmodule\n"
               "module sub(input a, output q); assign q = a;\nlogic [f(3):0] n;\n"
               "function int f(int x); return x < 2 ? 1 : f(x - 1); endfunction\nendmodule\n");
    QVERIFY2(design.extract(), qPrintable(design.messages.join(QLatin1Char('\n'))));
    QCOMPARE(TarnTest::netlistText(design.netlist->top()),
             QStringLiteral("top : top\n    clk O\n    a O\n    q O\n    r O\n"));
}

void TestOmissions::faultsStayErrors_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("error");
    const auto row = [](const char *name, const char *source, const char *error) {
        QTest::newRow(name) << QByteArray(source) << QString::fromUtf8(error);
    };
    row("in a block",
        "module top(input clk, a, output reg q);\nalways @(posedge clk) q <= a a;\n"
        "endmodule\n",
        "ERROR: a.sv:2:");
    row("beside an assertion",
        "module top(input clk, a, output reg q);\nassert property (@(posedge clk) a ##1 a);\n"
        "assign q = ;\nendmodule\n",
        "ERROR: a.sv:3:");
    row("open parenthesis",
        "module top(input clk, a, output reg q);\nassert property (@(posedge clk) a ##1 a;\n"
        "assign q = a;\nendmodule\n",
        "ERROR: a.sv:2:");
    row("in front of an assertion",
        "module top(input clk, a, output reg q);\nassign q = a\n"
        "l: assert property (@(posedge clk) a);\nendmodule\n",
        "ERROR: a.sv:3:1: syntax error");
    row("in front of a block with a construct that the grammar lacks",
        "module top(input clk, a, output reg q);\nwire w = a\n"
        "always @(posedge clk iff a) q <= a;\nendmodule\n",
        "ERROR: a.sv:3:1: syntax error");
    row("unknown net",
        "module top(input clk, a, output reg q);\n"
        "always @(posedge clk) q <= nothing;\nendmodule\n",
        "ERROR: a.sv:2:28: Can't find definition of variable: 'nothing'");
}

void TestOmissions::faultsStayErrors()
{
    QFETCH(QByteArray, source);
    QFETCH(QString, error);
    DesignFixture design;
    design.add(QStringLiteral("a.sv"), source);
    design.findModules();
    QVERIFY2(design.firstError().startsWith(error),
             qPrintable(design.messages.join(QLatin1Char('\n'))));
    QVERIFY(!design.buildNetlist());
}

void TestOmissions::comeAfterTheMacroOfTheTool()
{
    DesignFixture design;
    design.add(QStringLiteral("a.sv"), "module top(input clk, a, output reg q);\n"
                                       "assert property (@(posedge clk) a ##1 a);\n"
                                       "`ifndef VERILATOR\nassign q = ;\nassign q = , ;\n"
                                       "`else\nwire w;\n`endif\nendmodule\n");
    design.findModules();
    QCOMPARE(design.firstError(), QString());
    QCOMPARE(design.messages.size(), 2);
    QVERIFY(design.messages[0].contains(QLatin1String("the macro VERILATOR defined")));
    QVERIFY(design.messages[1].startsWith(QLatin1String("WARNING: left out: ")));
    QVERIFY(design.buildNetlist());
    QVERIFY(design.netlist->findNet(QStringLiteral("top/w")));
}

/// Each run ends at the first of these blocks.
void TestOmissions::endAfterSomeRuns()
{
    constexpr int Most = 20;
    const auto sourceOf = [](int blocks) {
        QByteArray source("module top(input [0:0] v); m #(.N(1)) u(.v(v)); endmodule\n"
                          "module m #(parameter N = 4) (input [N-1:0] v);\n"
                          "localparam W = $clog2(N);\n");
        for (int i = 0; i < blocks; ++i)
            source += QByteArray("integer s#, c#; reg [N*W-1:0] sel#; always @* for (s# = 0; "
                                 "s# < N; s# = s# + 1) if (v[s#]) begin sel#[c#*W +: W] = s#; "
                                 "c# = c# + 1; end\n")
                          .replace('#', QByteArray::number(i));
        return source + "endmodule\n";
    };
    DesignFixture design;
    design.add(QStringLiteral("a.sv"), sourceOf(Most));
    design.findModules();
    QCOMPARE(design.firstError(), QString());
    QCOMPARE(design.messages.size(), Most);
    QVERIFY(design.buildNetlist());
    QCOMPARE(design.netMessages, QStringList());

    DesignFixture more;
    more.add(QStringLiteral("a.sv"), sourceOf(Most + 1));
    more.findModules();
    QCOMPARE(more.messages.size(), Most + 1);
    QVERIFY2(more.firstError().contains(QLatin1String("cannot read this construct")),
             qPrintable(more.firstError()));
    QVERIFY(!more.buildNetlist());
}

/// The tool fails as long as the module is in the text.
void TestOmissions::goFromTheSmallestItemToTheModule()
{
    const ToolScript tool("case \"$1\" in -E) ;; *) if grep -q 'module sub' text0.sv; then\n"
                          "echo '%Error-UNSUPPORTED: text0.sv:4:25: Unsupported: this' >&2\n"
                          "exit 1; fi;; esac\n" +
                          ToolScript::elaborate());
    DesignFixture design;
    design.add(QStringLiteral("a.sv"), "module top(input a, output b); sub u(a, b); endmodule\n"
                                       "module sub(input a, output reg b);\n"
                                       "always @* begin b = a;\n"
                                       "  assert property (a |-> b);\nend endmodule\n");
    design.findModules();
    const bool isBuilt = design.buildNetlist();
    QStringList found = design.messages;
    found.replaceInStrings(design.path(QString()) + QLatin1Char('/'), QString());
    QCOMPARE(found, QStringList({QStringLiteral("WARNING: left out: a.sv:4: assertion: "
                                                "Unsupported: this"),
                                 QStringLiteral("WARNING: left out: a.sv:3: procedural block: "
                                                "Unsupported: this"),
                                 QStringLiteral("WARNING: left out: a.sv:2: module sub: "
                                                "Unsupported: this")}));
    QVERIFY(isBuilt);
    QCOMPARE(TarnTest::netlistText(design.netlist->top()),
             QStringLiteral("top : top\n    a O\n    b O\n"));
}

/// All items that one run reports are left out together, in little time.
void TestOmissions::goTogether()
{
    constexpr int Count = 1000;
    QByteArray source("module top(input clk, a, output logic q);\n");
    for (int i = 0; i < Count; ++i) {
        const QByteArray number = QByteArray::number(i);
        source += "property p" + number + "; @(posedge clk) a |-> ##1 q; endproperty\n" +
                  "always_ff @(posedge clk) q <= a;\nassert property (p" + number + ");\n";
    }
    DesignFixture design;
    design.add(QStringLiteral("a.sv"), source + "endmodule\n");
    QVERIFY2(design.extract(), qPrintable(design.firstError()));
    QCOMPARE((design.messages + design.netMessages).size(), 2 * Count);
    QCOMPARE(TarnTest::netlistText(design.netlist->top()),
             QStringLiteral("top : top\n    clk O\n    a O\n    q O\n"));
}

TARN_TEST_MAIN(TestOmissions)
#include "tst_omissions.moc"
