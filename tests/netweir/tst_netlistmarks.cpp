// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designfixture.h"
#include "elaboration.h"

#include <support/testcase.h>

#include <QApplication>
#include <QRegularExpression>
#include <QTest>

using namespace NETWEIR;

/// Which nets are excluded for Probe In and Probe Out use. Whole netlists are compared as text (see
/// netlisttext.h): '.' is a net without marks, 'O' one that is driven, 'X' one that is no hardware
/// value.
class TestNetlistMarks : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void marksFollowTheDesign_data();
    void marksFollowTheDesign();
    void tiedNetsAreDriven();
    void pinsOfStubsAreDrivers();
    void everythingConnectedToAnUnknownModuleIsDriven();
    void everyWidthOnAnUnknownModuleIsDriven();
    void pinsOfPrimitivesHaveTheirDirection();
    void marksOfBusesComeFromTheirMembers();
};

void TestNetlistMarks::marksFollowTheDesign_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *source, const char *expected) {
        // The literals begin with a line break so that their lines align.
        QTest::newRow(name) << QByteArray(source) << QString::fromUtf8(expected).mid(1);
    };

    row("ports of the top", R"(
module top(input i, output o, inout io, input [1:0] iv); endmodule)",
        R"(
top : top
    i O
    o .
    io O
    iv[1:0] OO
)");
    row("continuous assignments, bit by bit", R"(
module top(input a); wire w, x = a, free; wire [7:0] v; assign w = a; assign v[2] = a;
  assign v[6:5] = {a, a}; assign v[0 +: 1] = a; endmodule)",
        R"(
top : top
    a O
    w O
    x O
    free .
    v[7:0] .OO..O.O
)");
    row("right sides are no drivers", R"(
module top(output y); wire a, b; wire [1:0] v; assign y = a & v[0] | b; endmodule)",
        R"(
top : top
    y O
    a .
    b .
    v[1:0] ..
)");
    row("ranges that rise, begin elsewhere or are negative", R"(
module top(input a); wire [0:3] r; wire [9:6] o; wire [1:-2] n; logic [1:0][0:2] m;
  assign r[0] = a; assign o[7] = a; assign n[-2] = a; assign m[1][0] = a; assign m[0] = 0;
endmodule)",
        R"(
top : top
    a O
    r[0:3] O...
    o[9:6] ..O.
    n[1:-2] ...O
    m[1][0:2] O..
    m[0][0:2] OOO
)");
    row("concatenations on the left", R"(
module top(input [3:0] a); wire [3:0] v; wire w, x; logic [1:0] p; logic q;
  assign {v[0], w, v[3:2]} = a; always_comb {q, p[1]} = a[1:0]; endmodule)",
        R"(
top : top
    w O
    x .
    q O
    a[3:0] OOOO
    v[3:0] OO.O
    p[1:0] O.
)");
    row("processes", R"(
module top(input c, input a);
  logic ff, latch, comb, init, declared = 0, forced, deep; logic [3:0] part; reg [1:0] never;
  always_ff @(posedge c) begin ff <= a; part[1] <= a; end
  always_latch if (c) latch = a;
  always_comb comb = a;
  initial init = 0;
  initial force forced = 1;
  always @(posedge c) if (a) case (ff) 0: begin end default: if (!a) deep <= 1; endcase
endmodule)",
        R"(
top : top
    c O
    a O
    ff O
    latch O
    comb O
    init O
    declared O
    forced O
    deep O
    part[3:0] ..O.
    never[1:0] ..
)");
    row("constants in generate scopes stay with their own net", R"(
module top; wire w; wire v;
  if (1) begin : g wire w; assign w = 1'b1; wire [1:0] v; assign v[0] = 1'b0; end
  for (genvar i = 0; i < 2; i++) begin : h wire w; if (i) assign w = 1'b0; end
endmodule)",
        R"(
top : top
    w .
    v .
    g.w O
    h[0].w .
    h[1].w O
    g.v[1:0] .O
)");
    row("a constant at module level does not reach a generate scope", R"(
module top; wire w; assign w = 1'b1; if (1) begin : g wire w; end endmodule)",
        R"(
top : top
    w O
    g.w .
)");
    row("equal names in sibling scopes", R"(
module top(input a);
  if (1) begin : g wire w, x; assign w = a; initial begin : b logic x; x = a; end end
  if (1) begin : h wire w, x; assign x = a; end
  assign h.w = a;
endmodule)",
        R"(
top : top
    a O
    g.w O
    g.x .
    h.w O
    h.x O
)");
    row("an inner scope writes an outer net", R"(
module top(input a); wire [1:0] o; logic p;
  for (genvar i = 0; i < 2; i++) begin : g if (i) assign o[i] = a; end
  if (1) begin : h always_comb p = a; end endmodule)",
        R"(
top : top
    a O
    p O
    o[1:0] O.
)");
    row("a variable part select marks what it can reach", R"(
module top(input c, input [1:0] i, input [2:0] j);
  logic [7:0] bits, parts, high, all, far; logic [3:0][1:0] fields; logic [15:0] steps;
  always_ff @(posedge c) begin
    bits[i] <= c; parts[i +: 2] <= 0; high[i + 4] <= c; all[j] <= c; far[{i, 1'b0}] <= c;
    fields[i][1] <= c; steps[i * 4 +: 2] <= 0;
  end
endmodule)",
        R"(
top : top
    c O
    i[1:0] OO
    j[2:0] OOO
    bits[7:0] ....OOOO
    parts[7:0] ...OOOOO
    high[7:0] OOOO....
    all[7:0] OOOOOOOO
    far[7:0] OOOOOOOO
    fields[3][1:0] O.
    fields[2][1:0] O.
    fields[1][1:0] O.
    fields[0][1:0] O.
    steps[15:0] ..OO..OO..OO..OO
)");
    row("loops are counted", R"(
module top(input c);
  logic [7:0] even, shift, down, nested, until_now, some; integer k;
  always_ff @(posedge c) begin
    for (k = 0; k < 4; k = k + 1) even[k * 2] <= c;
    for (int i = 1; i < 4; i++) shift[i - 1] <= c;
    for (int i = 7; i >= 6; i--) down[i] <= c;
    for (int i = 0; i < 2; i++) for (int j = 0; j <= i; j++) nested[i * 4 + j] <= c;
    for (int i = 0; i < 20; i++) if (i < 8) until_now[i] <= c;
    for (int i = 0; i < 3; i++) begin some[i] <= c; if (c) i = i + 1; end
  end
endmodule)",
        R"(
top : top
    c O
    even[7:0] .O.O.O.O
    shift[7:0] .....OOO
    down[7:0] OO......
    nested[7:0] ..OO...O
    until_now[7:0] OOOOOOOO
    some[7:0] OOOOOOOO
    k[31:0] OOOOOOOOOOOOOOOOOOOOOOOOOOOOOOOO
)");
    row("structs by member", R"(
module top(input a); typedef struct packed {logic [1:0] x; logic y;} s_t; s_t s, w;
  s_t [1:0] v; struct {logic [1:0] p; logic q;} u; union packed {logic [2:0] n; s_t t;} un;
  assign s.x[0] = a; assign w = 0; assign v[1].y = a; always_comb u.q = a; assign un.t.y = a;
endmodule)",
        R"(
top : top
    a O
    s.y .
    w.y O
    v[1].y O
    v[0].y .
    u.q O
    s.x[1:0] .O
    w.x[1:0] OO
    v[1].x[1:0] ..
    v[0].x[1:0] ..
    u.p[1:0] ..
    un[2:0] ..O
)");
    row("elements of arrays", R"(
module top(input a); logic [1:0] up[0:2], down[2:0], two[0:1][1:0]; logic [1:0] whole[2];
  assign up[0] = 0; assign down[0][1] = a; assign two[0][1] = 0; assign whole = '{2'd1, 2'd2};
endmodule)",
        R"(
top : top
    a O
    up[0][1:0] OO
    up[1][1:0] ..
    up[2][1:0] ..
    down[2][1:0] ..
    down[1][1:0] ..
    down[0][1:0] O.
    two[0][1][1:0] OO
    two[0][0][1:0] ..
    two[1][1][1:0] ..
    two[1][0][1:0] ..
    whole[0][1:0] OO
    whole[1][1:0] OO
)");
    row("slices of arrays", R"(
module leaf(input logic [1:0] i[2]); endmodule
module top(input a); logic [1:0] up[0:3], down[5:2]; assign up[0:1] = '{2'd1, 2'd2};
  assign down[4:3] = '{2'd1, 2'd2}; leaf u(up[1:2]); endmodule)",
        R"(
top : top
    a O
    up[0][1:0] OO
    up[1][1:0] OO
    up[2][1:0] ..
    up[3][1:0] ..
    down[5][1:0] ..
    down[4][1:0] OO
    down[3][1:0] OO
    down[2][1:0] ..
    u : leaf
        i[0][1:0] OO
        i[1][1:0] ..
)");
    row("outputs of tasks and functions", R"(
package pk; task automatic pt(input logic i, output logic o); o = i; endtask endpackage
module top(input a); logic o, p, q, r, side, ret, unused; logic [1:0] v;
  task automatic t(output logic x, input logic y, inout logic z); x = y; z = y; endtask
  task sets; side = a; endtask
  function automatic int f(output logic x); x = 1; return 0; endfunction
  always_comb t(o, a, v[1]);
  always_comb pk::pt(a, p);
  logic b; always_comb pk::pt(.o(q), .i(b));
  initial sets;
  int n; initial n = f(r);
  function automatic logic g(input logic i); g = i; endfunction
  assign ret = g(unused);
endmodule)",
        R"(
top : top
    a O
    o O
    p O
    q O
    r O
    side O
    ret O
    unused .
    b .
    v[1:0] O.
    n[31:0] OOOOOOOOOOOOOOOOOOOOOOOOOOOOOOOO
)");
    row("system tasks that write", R"(
module top; logic [3:0] got, plus; integer fd, n; logic [7:0] line;
  initial begin n = $fscanf(fd, "%d", got); if ($value$plusargs("p=%d", plus)) ;
    n = $fgets(line, fd); end
endmodule)",
        R"(
top : top
    got[3:0] OOOO
    plus[3:0] OOOO
    fd[31:0] OOOOOOOOOOOOOOOOOOOOOOOOOOOOOOOO
    n[31:0] OOOOOOOOOOOOOOOOOOOOOOOOOOOOOOOO
    line[7:0] OOOOOOOO
)");
    row("system functions that write their arguments or open files", R"(
module top; int file, multi, seed, drawn, idle; logic [7:0] text, shown;
  initial begin file = $fopen("a", "w"); multi = $fopen("b"); drawn = $random(seed);
    $sformat(text, "%d", shown); $fclose(idle); end
endmodule)",
        R"(
top : top
    file[31:0] OOOOOOOOOOOOOOOOOOOOOOOOOOOOOOOO
    multi[31:0] OOOOOOOOOOOOOOOOOOOOOOOOOOOOOOOO
    seed[31:0] OOOOOOOOOOOOOOOOOOOOOOOOOOOOOOOO
    drawn[31:0] OOOOOOOOOOOOOOOOOOOOOOOOOOOOOOOO
    idle[31:0] ................................
    text[7:0] OOOOOOOO
    shown[7:0] ........
)");
    row("gates and pulls", R"(
module top(input a, input b); wire n, t, p; nand (n, a, b); bufif0 (t, a, b); pullup (p);
endmodule)",
        R"(
top : top
    a O
    b O
    n O
    t O
    p O
)");
    row("outputs of instances, whole and in parts", R"(
module leaf(input i, output [1:0] o); endmodule
module top(input a); wire [3:0] v; wire [1:0] w; wire x, y, z;
  leaf u0(.i(a), .o(v[2:1])); leaf u1(x, {y, w[0]}); leaf u2(.i(z), .o()); endmodule)",
        R"(
top : top
    a O
    x .
    y O
    z .
    v[3:0] .OO.
    w[1:0] .O
    u0 : leaf
        i O
        o[1:0] ..
    u1 : leaf
        i .
        o[1:0] ..
    u2 : leaf
        i .
        o[1:0] ..
)");
    row("inputs of instances are driven where their nets are", R"(
module leaf(input [3:0] i); leaf2 deep(.j(i[1:0])); endmodule
module leaf2(input [1:0] j); endmodule
module top(input a); wire f; wire [3:0] v; assign v[0] = a;
  leaf nets({f, a, v[1:0]}); leaf expression(~v); leaf constant(4'd3); leaf open(); leaf narrow(f);
endmodule)",
        R"(
top : top
    a O
    f .
    v[3:0] ...O
    nets : leaf
        i[3:0] .O.O
        deep : leaf2
            j[1:0] .O
    expression : leaf
        i[3:0] OOOO
        deep : leaf2
            j[1:0] OO
    constant : leaf
        i[3:0] OOOO
        deep : leaf2
            j[1:0] OO
    open : leaf
        i[3:0] ....
        deep : leaf2
            j[1:0] ..
    narrow : leaf
        i[3:0] OOO.
        deep : leaf2
            j[1:0] O.
)");
    row("inputs written within", R"(
module writes(input a, input [3:0] b, input logic [1:0] c, input d, e, output y);
  assign a = 1'b1; always_comb c[0] = d; assign b[2:1] = 2'b0; gives g(e); endmodule
module gives(output o); assign o = 1'b0; endmodule
module wraps(input [3:0] b, input f, z); writes w(.a(f), .b(b), .c(), .d(f & z), .e(), .y());
endmodule
module top(output y); wire p, q, r, z; wire [3:0] v, w; wire [1:0] c;
  writes u(.a(p), .b(v), .c(c), .d(z), .e(q), .y(y)); wraps x(w, r, z); endmodule)",
        R"(
top : top
    y O
    p O
    q O
    r O
    z .
    v[3:0] .OO.
    w[3:0] .OO.
    c[1:0] .O
    u : writes
        a O
        d .
        e O
        y .
        b[3:0] .OO.
        c[1:0] .O
        g : gives
            o O
    x : wraps
        f O
        z .
        b[3:0] .OO.
        w : writes
            a O
            d O
            e O
            y .
            b[3:0] .OO.
            c[1:0] .O
            g : gives
                o O
)");
    row("an input written from outside", R"(
module sub(input i, j); endmodule
module top(); wire p, q; sub u(.i(p), .j(q)); assign u.i = 1'b0; endmodule)",
        R"(
top : top
    p .
    q .
    u : sub
        i O
        j .
)");
    row("inouts are driven from either side", R"(
module drives(inout [1:0] p); assign p[0] = 1'b1; endmodule
module idles(inout [1:0] p); endmodule
module wraps(inout [1:0] p); drives d(p); endmodule
module top(inout [1:0] pad, input a); wire [1:0] v, w, x, y; assign y[1] = a;
  drives u0(v); idles u1(w); wraps u2(x); idles u3(pad); idles u4(y); endmodule)",
        R"(
top : top
    a O
    pad[1:0] OO
    v[1:0] .O
    w[1:0] ..
    x[1:0] .O
    y[1:0] O.
    u0 : drives
        p[1:0] .O
    u1 : idles
        p[1:0] ..
    u2 : wraps
        p[1:0] .O
        d : drives
            p[1:0] .O
    u3 : idles
        p[1:0] OO
    u4 : idles
        p[1:0] O.
)");
    row("arrays of instances take their parts", R"(
module leaf(input [1:0] i, output o, inout p); endmodule
module top(input [1:0] a); wire [3:0] v, w; wire [5:0] o; wire [1:0] p; assign v[3] = a[0];
  leaf down[1:0](.i(v), .o(o[5:4]), .p(p)); leaf up[0:1](.i({a, w[1:0]}), .o(o[1:0]), .p());
  leaf same[1:0](.i(w[1:0]), .o(), .p()); endmodule)",
        R"(
top : top
    a[1:0] OO
    v[3:0] O...
    w[3:0] ....
    o[5:0] OO..OO
    p[1:0] ..
    down[1] : leaf
        o .
        p .
        i[1:0] O.
    down[0] : leaf
        o .
        p .
        i[1:0] ..
    up[0] : leaf
        o .
        p .
        i[1:0] OO
    up[1] : leaf
        o .
        p .
        i[1:0] ..
    same[1] : leaf
        o .
        p .
        i[1:0] ..
    same[0] : leaf
        o .
        p .
        i[1:0] ..
)");
    row("hierarchical writes mark the instance that is meant", R"(
module leaf(input i); wire w, x; wire [3:0] v; logic l; assign top.up = 1'b1; assign top.g.x = i;
  if (1) begin : s wire y; end endmodule
module mid(input i); leaf u(i); assign u.s.y = i; endmodule
module top(input a); wire up; leaf u0(a), u1(a); mid m0(a), m1(a); leaf z[1:0](a);
  if (1) begin : g wire x; leaf in(a); end
  assign u0.w = a; assign u1.v[2:1] = 2'd1; assign m1.u.x = a; assign g.in.w = a;
  assign z[1].w = a; initial m0.u.l = 0; endmodule)",
        R"(
top : top
    a O
    up O
    g.x O
    u0 : leaf
        i O
        w O
        x .
        l .
        s.y .
        v[3:0] ....
    u1 : leaf
        i O
        w .
        x .
        l .
        s.y .
        v[3:0] .OO.
    m0 : mid
        i O
        u : leaf
            i O
            w .
            x .
            l O
            s.y O
            v[3:0] ....
    m1 : mid
        i O
        u : leaf
            i O
            w .
            x O
            l .
            s.y O
            v[3:0] ....
    z[1] : leaf
        i O
        w O
        x .
        l .
        s.y .
        v[3:0] ....
    z[0] : leaf
        i O
        w .
        x .
        l .
        s.y .
        v[3:0] ....
    g.in : leaf
        i O
        w O
        x .
        l .
        s.y .
        v[3:0] ....
)");
    row("a child writes the scope around its instance first", R"(
module leaf(input i); assign outer.w = i; endmodule
module top(input a); wire w;
  if (1) begin : outer wire w; if (1) begin : deep leaf u(a); end end
  if (1) begin : other wire w; end endmodule)",
        R"(
top : top
    a O
    w .
    outer.w O
    other.w .
    outer.deep.u : leaf
        i O
)");
    row("interfaces: members, modports, ports through levels", R"(
interface bus_if(input c); logic v, r; logic [1:0] d; modport m(output d, input r, input c);
  modport s(input d, output r); endinterface
module by_modport(bus_if.m p); endmodule
module by_write(bus_if p); assign p.v = 1'b1; assign p.d[0] = p.c; endmodule
module through(bus_if p); by_write u(p); endmodule
module reads(bus_if.s p, input i); endmodule
module top(input c); bus_if a(c), b(c), e(c), f(c); wire n; bus_if h(n);
  by_modport u0(a); by_write u1(b); through u2(e); reads u3(f, a.r); assign a.v = c;
  reads u4(h, b.v); endmodule)",
        R"(
top : top
    c O
    n .
    a : bus_if
        c O
        v O
        r .
        d[1:0] OO
    b : bus_if
        c O
        v O
        r .
        d[1:0] .O
    e : bus_if
        c O
        v O
        r .
        d[1:0] .O
    f : bus_if
        c O
        v .
        r O
        d[1:0] ..
    h : bus_if
        c .
        v .
        r O
        d[1:0] ..
    u0 : by_modport
    u1 : by_write
    u2 : through
        u : by_write
    u3 : reads
        i .
    u4 : reads
        i O
)");
    row("arrays of interfaces with modports driven in a child", R"(
interface bus_if; logic v; logic [1:0] d; modport m(output d); endinterface
module one(bus_if.m p); endmodule
module writes(bus_if p); assign p.v = 1'b0; endmodule
module all(bus_if p[2]); assign p[0].v = 1'b1; endmodule
module some(bus_if.m p[1:0]); endmodule
module top; bus_if up[3](); bus_if down[2:1](); bus_if spread[1:0](); bus_if given[2]();
  one u0(up[1]); writes u1(down[2]); all u2(down); one u3[1:0](spread); some u4(given);
  writes u5(up[2]); endmodule)",
        R"(
top : top
    up[0] : bus_if
        v .
        d[1:0] ..
    up[1] : bus_if
        v .
        d[1:0] OO
    up[2] : bus_if
        v O
        d[1:0] ..
    down[2] : bus_if
        v O
        d[1:0] ..
    down[1] : bus_if
        v .
        d[1:0] ..
    spread[1] : bus_if
        v .
        d[1:0] OO
    spread[0] : bus_if
        v .
        d[1:0] OO
    given[0] : bus_if
        v .
        d[1:0] OO
    given[1] : bus_if
        v .
        d[1:0] OO
    u0 : one
    u1 : writes
    u2 : all
    u3[1] : one
    u3[0] : one
    u4 : some
    u5 : writes
)");
    row("interfaces within interfaces and generate scopes", R"(
interface in_if; logic s; endinterface
interface bus_if; logic v; in_if inner(); task set; v = 1; endtask endinterface
module leaf(bus_if p); assign p.inner.s = 1'b1; endmodule
module top(input c); bus_if a(); bus_if b();
  if (1) begin : g bus_if l(); leaf u(l); end
  leaf w(a); assign b.inner.s = c; endmodule)",
        R"(
top : top
    c O
    a : bus_if
        v O
        inner : in_if
            s O
    b : bus_if
        v O
        inner : in_if
            s O
    g.l : bus_if
        v O
        inner : in_if
            s O
    g.u : leaf
    w : leaf
)");
    row("what holds no hardware value", R"(
class c_t; int x; endclass
module top; real r; string s; event e; c_t o; int dyn[]; int queue[$]; int map[string]; chandle h;
  supply0 gnd; supply1 [1:0] vdd; wire ok = 1'b0; wire (strong0, weak1) sure = 1'b1;
  real rs[1:0]; struct {logic a; string b;} mix; initial r = 1.0;
  if (1) begin : g supply1 vcc; end endmodule)",
        R"(
top : top
    r X
    s X
    e X
    o X
    dyn X
    queue X
    map X
    h X
    gnd X
    ok O
    sure O
    rs[1] X
    rs[0] X
    mix.a .
    mix.b X
    g.vcc X
    vdd[1:0] XX
)");
    row("variables of packages", R"(
package pk; logic w; logic only; endpackage
module top(input a); wire w; logic only; initial pk::w = 1; always_comb only = a; endmodule)",
        R"(
top : top
    a O
    w .
    only O
)");
    row("clocking blocks read", R"(
module top(input c); logic d, q; clocking cb @(posedge c); input d; endclocking
  always_ff @(posedge c) q <= cb.d; endmodule)",
        R"(
top : top
    c O
    d .
    q O
)");
    row("memories reached from another module", R"(
interface mem_if; logic [1:0] m[4]; logic [1:0] k[2]; endinterface
module user(mem_if p, input [1:0] i); assign p.m[i] = 0; assign p.k[1] = 0; endmodule
module leaf; logic [1:0] m[4]; endmodule
module top(input [1:0] i); mem_if a(); user u(a, i); leaf l(); assign l.m[i] = 0; endmodule)",
        R"(
top : top
    i[1:0] OO
    a : mem_if
        m X
        k[0][1:0] ..
        k[1][1:0] OO
    u : user
        i[1:0] OO
    l : leaf
        m X
)");
    row("arrays through ports", R"(
module leaf(input logic [1:0] i[0:1], output logic [1:0] o[1:0]); endmodule
module top(input a); logic [1:0] x[0:1], y[0:1], z[1:0]; assign x[0] = {a, a}; assign z[0] = 0;
  leaf u(x, y); leaf v(z, ); endmodule)",
        R"(
top : top
    a O
    x[0][1:0] OO
    x[1][1:0] ..
    y[0][1:0] OO
    y[1][1:0] OO
    z[1][1:0] ..
    z[0][1:0] OO
    u : leaf
        i[0][1:0] OO
        i[1][1:0] ..
        o[1][1:0] ..
        o[0][1:0] ..
    v : leaf
        i[0][1:0] ..
        i[1][1:0] OO
        o[1][1:0] ..
        o[0][1:0] ..
)");
}

void TestNetlistMarks::marksFollowTheDesign()
{
    QFETCH(QByteArray, source);
    QFETCH(QString, expected);

    QCOMPARE(TarnTest::netlistTextOf(source), expected);
}

/// Nets that the elaborated design leaves unconnected are named in the options. Their marks reach
/// the ports of other instances.
void TestNetlistMarks::tiedNetsAreDriven()
{
    const QByteArray source = R"(
module inner(inout p, input i); wire w; tran (p, w); endmodule
module top(inout pad); wire w, a, b, \x/1 ; wire [3:0] v; tran (pad, w); inner u(a, b);
  inner u1(v[1], v[0]); generate if (1) begin : g wire w, z; end endgenerate
  inner u2(w, w); tran (\x/1 , pad); endmodule)";
    Internal::ReadOptions options;
    options.tiedNets[QStringLiteral("top")] = {QStringLiteral("pad"), QStringLiteral("w"),
                                               QStringLiteral("x/1"), QStringLiteral("none")};
    options.tiedNets[QStringLiteral("inner")] = {QStringLiteral("p"), QStringLiteral("w")};
    QCOMPARE(TarnTest::netlistTextOf(source, options), QStringLiteral(R"(top : top
    pad O
    w O
    a O
    b .
    x/1 O
    g.w O
    g.z .
    v[3:0] ..O.
    u : inner
        p O
        i .
        w O
    u1 : inner
        p O
        i .
        w O
    u2 : inner
        p O
        i O
        w O
)"));
}

void TestNetlistMarks::pinsOfStubsAreDrivers()
{
    const QByteArray source = R"(
module STUB(input [1023:0] a, input [1023:0] b); endmodule
module ONE(input p); endmodule
module leaf(input i); wire w; endmodule
module top(input x); wire [3:0] v, w, e, s; wire f, g; leaf u(f);
  STUB named(.a(v[2:1]), .b({w[3], g})); STUB inputs(~e, 2'd1); ONE bits[3:0](s); STUB far(u.w, );
endmodule)";
    Internal::ReadOptions options;
    options.unknownModules = {QStringLiteral("STUB"), QStringLiteral("ONE")};
    QCOMPARE(TarnTest::netlistTextOf(source, options), QStringLiteral(R"(top : top
    x O
    f .
    g O
    v[3:0] .OO.
    w[3:0] O...
    e[3:0] ....
    s[3:0] OOOO
    u : leaf
        i .
        w O
)"));
}

/// Begins with the sources, as nothing declares the width of an unknown module's pins.
void TestNetlistMarks::everythingConnectedToAnUnknownModuleIsDriven()
{
    TarnTest::DesignFixture design;
    design.add(QStringLiteral("top.v"), R"(
module top(input clk); wire [7:0] whole, part, mixed; wire [3:0] spread; wire lone, other; wire free;
  UNKNOWN #(.INIT(3)) u0(.C(clk), .D(whole), .Q(part[6:5]), .R({mixed[7:6], lone}));
  POSITION u1(clk, other, part[0], ~mixed[1:0]); ARRAY u2[3:0](.S(spread), .C(clk)); endmodule)");
    QVERIFY2(design.extract(), qPrintable(design.firstError()));
    QCOMPARE(TarnTest::netlistText(design.netlist->top()), QStringLiteral(R"(top : top
    clk O
    lone O
    other O
    free .
    whole[7:0] OOOOOOOO
    part[7:0] .OO....O
    mixed[7:0] OO......
    spread[3:0] OOOO
)"));
}

/// However the elaborator fits a net to the width of the pin, and in arrays too.
void TestNetlistMarks::everyWidthOnAnUnknownModuleIsDriven()
{
    TarnTest::DesignFixture design;
    design.add(QStringLiteral("top.sv"), R"(
interface link; logic [1:0] l; wire free; endinterface
module top(input c); wire [31:0] q; wire [3:0] part, mixed, two; wire signed [3:0] number;
  wire [9999:0] wide; wire [2:0] t; wire e; wire [3:0] words [1:0]; wire [2999:0] big; link i();
  struct packed { logic [1:0] x, y; } st; wire one, free;
  RAM m[3:0](.q(q), .clk(c), .p(part[2:1])), n(.q(two)); RAM k[1:0][1:0](.q(mixed[3:1]));
  U u0(.p(wide)); U u1(.p({e, t})); U u2[1:0](.p(t[1:0])); U u3(.p(number)); U u4(.p(words[1]));
  U u5(.p(st.y)); U u6(.p(i.l[1])); U u7(.p(big[2999:1])); U u8(.p({{one}})); U u9(.p(~free));
endmodule)");
    QVERIFY2(design.extract(), qPrintable(design.firstError()));
    QString text = TarnTest::netlistText(design.netlist->top());
    text.replace(QRegularExpression(QStringLiteral("O{100,}")), QStringLiteral("O~"));
    QCOMPARE(text, QStringLiteral(R"(top : top
    c O
    e O
    one O
    free .
    q[31:0] OOOOOOOOOOOOOOOOOOOOOOOOOOOOOOOO
    part[3:0] .OO.
    mixed[3:0] OOO.
    two[3:0] OOOO
    number[3:0] OOOO
    wide[9999:0] O~
    t[2:0] OOO
    words[1][3:0] OOOO
    words[0][3:0] ....
    big[2999:0] O~.
    st.x[1:0] ..
    st.y[1:0] OO
    i : link
        free .
        l[1:0] O.
)"));
}

void TestNetlistMarks::pinsOfPrimitivesHaveTheirDirection()
{
    const QByteArray source = R"(
module PRIM(input i, output [1:0] o, inout io); endmodule
primitive udp(o, a); output o; input a; table 0 : 1; 1 : 0; endtable endprimitive
module top; wire i, io, u, a; wire [3:0] o; PRIM p(i, o[2:1], io); udp g(u, a); endmodule)";
    Internal::ReadOptions options;
    options.primitiveModules = {QStringLiteral("PRIM")};
    QCOMPARE(TarnTest::netlistTextOf(source, options), QStringLiteral(R"(top : top
    i .
    io O
    u O
    a .
    o[3:0] .OO.
)"));
}

void TestNetlistMarks::marksOfBusesComeFromTheirMembers()
{
    const TarnTest::Elaboration design("module top(input a); wire [1:0] none, some; assign some[0] "
                                       "= a; supply1 [1:0] s; endmodule");
    QVERIFY2(design.isOk(), design.log().constData());
    QString error;
    const auto netlist = design.read({}, &error);
    QVERIFY2(netlist, qPrintable(error));
    const QList<RtlNetBus *> buses = netlist->top()->buses();
    QCOMPARE(buses.size(), 3);
    QVERIFY(!buses.at(0)->excludedForProbeOut());
    QVERIFY(buses.at(1)->excludedForProbeOut());
    QVERIFY(!buses.at(1)->excludedForProbeIn());
    QVERIFY(buses.at(2)->excludedForProbeIn());
    QVERIFY(buses.at(2)->excludedForProbeOut());
}

TARN_TEST_MAIN(TestNetlistMarks)
#include "tst_netlistmarks.moc"
