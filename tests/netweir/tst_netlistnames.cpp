// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "elaboration.h"

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR;

/// What appears in the netlist of a design and under which names. Whole netlists are compared as
/// text (see netlisttext.h).
class TestNetlistNames : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void netlistShowsTheDesign_data();
    void netlistShowsTheDesign();
    void stepsOfNamesAreThoseOfTheSource();
    void unknownAndPrimitiveModulesAreNoNodes();
    void jtagPrimitiveCountsWhereItIsReached_data();
    void jtagPrimitiveCountsWhereItIsReached();
};

void TestNetlistNames::netlistShowsTheDesign_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *source, const char *expected) {
        // The literals begin with a line break so that their lines align.
        QTest::newRow(name) << QByteArray(source)
                            << QString::fromUtf8(expected).mid(1).replace(
                                   QStringLiteral("%1"), QString(2048, QLatin1Char('.')));
    };

    row("a wire that is only an intermediate", R"(
module top(input a, output y); wire mid; assign mid = ~a; assign y = ~mid; endmodule)",
        R"(
top : top
    a O
    y O
    mid O
)");
    row("ranges", R"(
module top #(parameter W = 3);
  wire [7:4] fall; wire [0:2] rise; wire [0:0] one; wire none; wire [1:-1] neg;
  wire [W-1:0] par; wire [-3:-2] both;
endmodule)",
        R"(
top : top
    none .
    fall[7:4] ....
    rise[0:2] ...
    one[0:0] .
    neg[1:-1] ...
    par[2:0] ...
    both[-3:-2] ..
)");
    row("kinds of variables", R"(
module top; reg r; logic [1:0] l; bit b; byte by; shortint si; integer i; int n; tri t; wand wa;
endmodule)",
        R"(
top : top
    r .
    b .
    t .
    wa .
    l[1:0] ..
    by[7:0] ........
    si[15:0] ................
    i[31:0] ................................
    n[31:0] ................................
)");
    row("packed dimensions: a bus for each innermost", R"(
module top; logic [1:0][3:0] a; logic [0:1][1:0][2:0] b; typedef logic bit_t; bit_t [1:0] c;
endmodule)",
        R"(
top : top
    a[1][3:0] ....
    a[0][3:0] ....
    b[0][1][2:0] ...
    b[0][0][2:0] ...
    b[1][1][2:0] ...
    b[1][0][2:0] ...
    c[1:0] ..
)");
    row("structs, unions and enums", R"(
package pk;
  typedef enum logic [1:0] {A, B, C} state_t;
  typedef struct packed {logic hi; logic [1:0] lo;} pair_t;
  typedef union packed {logic [7:0] all; logic [1:0][3:0] parts;} either_t;
endpackage
module top; import pk::*;
  struct packed {logic valid; logic [3:0] data; pair_t pair; state_t state; either_t either;} st;
  struct {logic a; pair_t [1:0] b;} loose;
  either_t un; state_t now; enum {X, Y} wide;
endmodule)",
        R"(
top : top
    st.valid .
    st.pair.hi .
    loose.a .
    loose.b[1].hi .
    loose.b[0].hi .
    st.data[3:0] ....
    st.pair.lo[1:0] ..
    st.state[1:0] ..
    st.either[7:0] ........
    loose.b[1].lo[1:0] ..
    loose.b[0].lo[1:0] ..
    un[7:0] ........
    now[1:0] ..
    wide[31:0] ................................
)");
    row("unpacked arrays", R"(
module top;
  logic [1:0] up[0:1]; logic [1:0] down[1:0]; logic count[2]; logic [1:0] two[0:1][3:2];
endmodule)",
        R"(
top : top
    count[0] .
    count[1] .
    up[0][1:0] ..
    up[1][1:0] ..
    down[1][1:0] ..
    down[0][1:0] ..
    two[0][3][1:0] ..
    two[0][2][1:0] ..
    two[1][3][1:0] ..
    two[1][2][1:0] ..
)");
    row("memories", R"(
module top(input c, input [1:0] i, output logic [1:0] q);
  logic [1:0] read[4]; logic [1:0] written[4]; logic [1:0] fixed[2]; logic [7:0] big[0:512];
  logic [2047:0] fits[2]; logic [3:0] file[2];
  struct {logic go; logic [1:0] mem[4];} mixed;
  always_ff @(posedge c) begin q <= read[i]; written[i] <= q; fixed[1] <= q; mixed.mem[i] <= q; end
  initial $readmemh("x.hex", file);
endmodule)",
        R"(
top : top
    c O
    read X
    written X
    big X
    file X
    mixed.go .
    mixed.mem X
    i[1:0] OO
    q[1:0] OO
    fixed[0][1:0] ..
    fixed[1][1:0] OO
    fits[0][2047:0] %1
    fits[1][2047:0] %1
)");
    row("instances, one module at three parameter values", R"(
module leaf #(parameter W = 1, parameter K = 0); wire [W-1:0] w; endmodule
module top; leaf a(); leaf #(2) b(); leaf #(.W(2), .K(1)) c(); leaf #(2) d(); endmodule)",
        R"(
top : top
    a : leaf
        w[0:0] .
    b : leaf
        w[1:0] ..
    c : leaf
        w[1:0] ..
    d : leaf
        w[1:0] ..
)");
    row("generate: nested, named, unnamed, loops, cases", R"(
module leaf; wire w; endmodule
module top;
  genvar i, j;
  for (i = 0; i < 2; i = i + 1) begin : g
    wire w;
    for (j = -1; j < 1; j = j + 1) begin : h wire [1:0] v; end
    if (i == 1) begin wire only; leaf u(); end
  end
  if (1) begin : on wire x; end else begin : off wire y; end
  case (2) 1: begin : c1 wire z; end 2: begin wire z; end endcase
  for (genvar k = 0; k < 1; k++) leaf single();
endmodule)",
        R"(
top : top
    g[0].w .
    g[1].w .
    g[1].genblk2.only .
    on.x .
    genblk3.z .
    g[0].h[-1].v[1:0] ..
    g[0].h[0].v[1:0] ..
    g[1].h[-1].v[1:0] ..
    g[1].h[0].v[1:0] ..
    g[1].genblk2.u : leaf
        w .
    genblk4[0].single : leaf
        w .
)");
    row("genvars are none of the integers", R"(
module top; integer used, alone; genvar gi, gj; initial used = 1;
  for (gi = 0; gi < 1; gi = gi + 1) begin : g integer inner; end endmodule)",
        R"(
top : top
    used[31:0] OOOOOOOOOOOOOOOOOOOOOOOOOOOOOOOO
    alone[31:0] ................................
    g[0].inner[31:0] ................................
)");
    row("arrays of instances", R"(
module leaf(input i); endmodule
module top(input a); leaf u[1:0](a); leaf v[2:3](a); leaf w[0:0](a); endmodule)",
        R"(
top : top
    a O
    u[1] : leaf
        i O
    u[0] : leaf
        i O
    v[2] : leaf
        i O
    v[3] : leaf
        i O
    w[0] : leaf
        i O
)");
    row("interfaces", R"(
interface sub_if; logic s; endinterface
interface bus_if #(parameter W = 2)(input c); logic [W-1:0] d; sub_if inner(); endinterface
module top(input c); bus_if one(c); bus_if #(3) three(c); bus_if many[1:0](c); endmodule)",
        R"(
top : top
    c O
    one : bus_if
        c O
        d[1:0] ..
        inner : sub_if
            s .
    three : bus_if
        c O
        d[2:0] ...
        inner : sub_if
            s .
    many[1] : bus_if
        c O
        d[1:0] ..
        inner : sub_if
            s .
    many[0] : bus_if
        c O
        d[1:0] ..
        inner : sub_if
            s .
)");
    row("names with double underscores and escaped names", R"(
module m__x; wire y; endmodule
module par__N2; wire plain; endmodule
module par #(parameter N = 1); wire [N:0] sized; endmodule
module \odd/name (input i); endmodule
module top;
  wire a__b, __c__, d__DOT__e, \__Vtool , x__Viftop;
  wire \a/b , \c.d , \e[3] , \f<g&"h'> ; wire [1:0] \bus[0] ;
  m__x u__0(); par__N2 p0(); par #(2) p1(); \odd/name \in/st.x[1] (a__b);
  if (1) begin : \g/h wire w; end
endmodule)",
        R"(
top : top
    a__b .
    __c__ .
    d__DOT__e .
    __Vtool .
    x__Viftop .
    a/b .
    c.d .
    e[3] .
    f<g&"h'> .
    g/h.w .
    bus[0][1:0] ..
    u__0 : m__x
        y .
    p0 : par__N2
        plain .
    p1 : par
        sized[2:0] ...
    in/st.x[1] : odd/name
        i .
)");
    const QByteArray longName(150, 'n');
    QTest::newRow("names that the elaborator cuts")
        << QByteArray("module top; wire " + longName + "; wire \\" + longName + "/x ;\n" +
                      longName + "_m " + longName + "_u();\nendmodule\nmodule " + longName +
                      "_m; wire w; endmodule")
        << QString::fromLatin1("top : top\n    %1 .\n    %1/x .\n    %1_u : %1_m\n        w .\n")
               .arg(QString::fromLatin1(longName));
    row("empty places among the ports", R"(
module leaf(a, , b); input a, b; endmodule
module top(x, , y); input x; output y; leaf u(x, , y); endmodule)",
        R"(
top : top
    x O
    y .
    u : leaf
        a O
        b .
)");
    row("values of former cycles", R"(
module top(input c, input a, output logic q);
  assert property (@(posedge c) $rose(a) |=> $past(a, 2) && $stable(q));
  always_ff @(posedge c) q <= $past(a) ^ $fell(a);
endmodule)",
        R"(
top : top
    c O
    a O
    q O
)");
    row("what is no net", R"(
package pk; int packaged; function automatic logic pf(input logic i); pf = i; endfunction endpackage
module top(input c); parameter P = 1; localparam L = 2; typedef logic t_t;
  function automatic logic f(input logic i); logic local_f; local_f = i; f = local_f; endfunction
  task automatic t(input logic i, output logic o); o = i; endtask
  logic q, r;
  always @(posedge c) begin : named logic local_p; int k; local_p = f(c);
    for (k = 0; k < 2; k++) q <= local_p; for (int m = 0; m < 2; m++) r <= pk::pf(c); end
  initial begin automatic int n = 1; repeat (3) n++; end
  clocking cb @(posedge c); input q; endclocking
endmodule)",
        R"(
top : top
    c O
    q O
    r O
)");
}

void TestNetlistNames::netlistShowsTheDesign()
{
    QFETCH(QByteArray, source);
    QFETCH(QString, expected);

    QCOMPARE(TarnTest::netlistTextOf(source), expected);
}

/// Each step in quotes, with its indexes behind it.
static QString stepText(const QVector<NameStep> &steps)
{
    QStringList texts;
    for (const NameStep &step : steps)
        texts.append(QStringLiteral("'%1'%2").arg(step.identifier, step.indexes));
    return texts.join(' ');
}

/// Names that look alike and mean different things.
void TestNetlistNames::stepsOfNamesAreThoseOfTheSource()
{
    const TarnTest::Elaboration design(R"(
typedef struct packed { logic on; logic \m.n ; logic [1:0] \k[0] ; } item_t;
module sub(input wire a); wire \in.side ; endmodule
module top(input wire a);
    wire plain, \a.b , \c[0] , \d/e ;
    wire [1:0] \v[2] [3:4];
    wire item_t s, \t.u ;
    if (1) begin : e wire in; end
    if (1) begin : \e.s wire in; sub u(a); end
    if (1) begin : \g[0] wire in; sub \u[1] (a); end
    for (genvar i = 0; i < 1; i++) begin : g2 wire in; end
    for (genvar i = -1; i < 0; i++) begin : \l.o[3] wire in; sub arr[0:0](a); end
endmodule)");
    QVERIFY2(design.isOk(), design.log().constData());
    QString error;
    const auto netlist = design.read({}, &error);
    QVERIFY2(netlist, qPrintable(error));
    QStringList lines;
    for (const RtlNet *net : netlist->top()->singleNetsIncludeSub())
        lines.append(stepText(netlist->nameStepsOf(net)));
    for (const RtlNetBus *bus : netlist->top()->netbusesIncludeSub()) {
        lines.append(stepText(netlist->nameStepsOf(bus)));
        lines.append(stepText(netlist->nameStepsOf(bus->nets().first())));
    }
    for (const Hierachy *node : netlist->top()->children())
        lines.append(stepText(netlist->nameStepsOf(node)));
    QCOMPARE(lines.join('\n'), QString::fromUtf8(R"('a'
'plain'
'a.b'
'c[0]'
'd/e'
's' 'on'
's' 'm.n'
't.u' 'on'
't.u' 'm.n'
'e' 'in'
'e.s' 'in'
'g[0]' 'in'
'g2'[0] 'in'
'l.o[3]'[-1] 'in'
'a'
'in.side'
'a'
'in.side'
'a'
'in.side'
'v[2]'[3][1:0]
'v[2]'[3][1]
'v[2]'[4][1:0]
'v[2]'[4][1]
's' 'k[0]'[1:0]
's' 'k[0]'[1]
't.u' 'k[0]'[1:0]
't.u' 'k[0]'[1]
'e.s' 'u'
'g[0]' 'u[1]'
'l.o[3]'[-1] 'arr'[0])"));
}

void TestNetlistNames::unknownAndPrimitiveModulesAreNoNodes()
{
    const QByteArray source = R"(
module STUB #(parameter N = 0)(input a); endmodule
module PRIM(input a, output b); wire inner; endmodule
primitive udp(o, a); output o; input a; table 0 : 1; 1 : 0; endtable endprimitive
module user(input a); endmodule
module top(input a); wire b, c; STUB #(3) s(a); PRIM p(a, b); udp u(c, a); user v(a); endmodule)";
    Internal::ReadOptions options;
    options.unknownModules.insert(QStringLiteral("STUB"));
    options.primitiveModules.insert(QStringLiteral("PRIM"));
    QCOMPARE(TarnTest::netlistTextOf(source, options),
             QStringLiteral("top : top\n    a O\n    b O\n    c O\n    v : user\n        a O\n"));
}

void TestNetlistNames::jtagPrimitiveCountsWhereItIsReached_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<bool>("uses");
    QTest::newRow("instance") << QByteArray("KX_JTAG j(c);") << true;
    QTest::newRow("below") << QByteArray("below b(c);") << true;
    QTest::newRow("array") << QByteArray("KX_JTAG j[1:0](c);") << true;
    QTest::newRow("taken branch") << QByteArray("if (1) begin KX_JTAG j(c); end") << true;
    QTest::newRow("untaken branch") << QByteArray("if (0) begin KX_JTAG j(c); end") << false;
    QTest::newRow("comment") << QByteArray("// KX_JTAG j(c);") << false;
    QTest::newRow("name of a net") << QByteArray("wire KX_JTAG;") << false;
    QTest::newRow("part of a name") << QByteArray("KX_JTAG2 j(c);") << false;
}

void TestNetlistNames::jtagPrimitiveCountsWhereItIsReached()
{
    QFETCH(QByteArray, body);
    QFETCH(bool, uses);

    const TarnTest::Elaboration design(
        "module KX_JTAG(input i); endmodule module KX_JTAG2(input i); endmodule\n"
        "module below(input i); KX_JTAG j(i); endmodule\n"
        "module top(input c);\n" +
        body + "\nendmodule");
    QVERIFY2(design.isOk(), design.log().constData());
    Internal::ReadOptions options;
    options.primitiveModules.insert(QStringLiteral("KX_JTAG"));
    QString error;
    const auto netlist = design.read(options, &error);
    QVERIFY2(netlist, qPrintable(error));
    QCOMPARE(netlist->usesJtagPrimitive(), uses);
}

QTEST_APPLESS_MAIN(TestNetlistNames)
#include "tst_netlistnames.moc"
