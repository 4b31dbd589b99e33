// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/verilog/verilogtokens.h>
#include <netweir/internal/verilog/writtennames.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;

class TestWrittenNames : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void areFoundInProcesses_data();
    void areFoundInProcesses();
};

void TestWrittenNames::areFoundInProcesses_data()
{
    QTest::addColumn<QByteArray>("process");
    QTest::addColumn<QString>("written");
    const auto row = [](const char *name, const char *process, const char *written) {
        QTest::newRow(name) << QByteArray(process) << QString::fromLatin1(written);
    };
    row("statement alone", "a = b;", "a");
    row("blocking", "initial a = b;", "a");
    row("with events and delays", "always @(posedge c or d.e) #1 a <= #2 b + @(f) c;", "a");
    row("event without parentheses", "always @c.d a <= b;", "a");
    row("any event", "always @* a = b; ", "a");
    row("operators", "initial begin a += 1; b++; c <<= 1; ++d; e |= f; end", "a b c d e");
    row("bits", "initial begin a[3] = 1; b[7:4] = 1; c[i] = 1; d[1][2] = 1; e[i+:2] = 1; end",
        "a[3:3] b[7:4] c d e");
    row("concatenation", "initial {a, b[2], {c, d.e}} <= {f, g};", "a b[2:2] c d.e");
    row("members", "initial begin s.f[1] = 1; i.j.k <= 1; a[2].b = 1; end", "s.f i.j.k a.b");
    row("conditions are no writes",
        "initial if (a == 1 && b <= 2) c = 1; else while (d) e = f ? g : h;", "c e");
    row("case",
        "always_comb case (s) A: a = 1; B, C: begin b = 1; end 2'd3: c = 1; default: d = 1;"
        " endcase",
        "a b c d");
    row("loops", "initial for (i = 0; i < 3; i = i + 1) repeat (2) forever a[i] = j;", "i i a");
    row("two loop variables", "initial for (i = 0, j = 0; i < 3; i++, j--) a = j;", "i j i j a");
    row("variables of its own",
        "initial begin : l int k = m, n; reg [3:0] r; my_t t; automatic logic v = 0; k = 1; n = 2; "
        "r[2] = 1; t.x = 1; v = 1; for (int i = 0; i < 3; i++) a = i; end",
        "a");
    row("tasks", "initial begin t(a, b[1], c + d, {e, f}); u; $display(x, y); end",
        "a b[1:1] c e f");
    row("what reads into variables", "initial begin $readmemh(\"f\", mem); n = $fopen(\"x\"); end",
        "mem n");
    row("procedural assignments", "initial begin force a.b = 1; release c; assign d = 1; end",
        "a.b d");
    row("labels and forks", "initial fork : l m: a = 1; begin : n b = 1; end : n join_any", "a b");
    row("patterns", "initial case (a) matches tagged A .n : b = n; default: c = 1; endcase", "b c");
    row("words in front", "initial begin return; void'(f(a)); this.b = 1; return c; end", "b");
    row("task by a hierarchical name", "initial begin a.t(b); k::u(c); end", "b c");
    row("words that only look like system tasks", "initial \\$t (a);", "a");
    row("comparisons", "initial begin a == b; c >= d; e <= f; g === h; end", "e");
    row("every operator",
        "initial begin a -= 1; b *= 1; c /= 1; d %= 1; e &= 1; f ^= 1; g >>= 1; h >>>= 1; "
        "i <<<= 1; j--; --k; end",
        "a b c d e f g h i j k");
    row("ranges that are no plain numbers",
        "initial begin a[1:W] = 1; b[4'd1] = 1; c[1+:2] = 1; d[1 = 1; end", "a b c");
    row("declarations with values",
        "initial begin int a = f(b, c), d[2] = '{1, 2}; a = d; e = 1; end", "e");
    row("delayed control of any form",
        "initial begin #(1:2:3) a = 1; @(b or c) d = 1; ## 2 e <= 1; end", "a d e");
    row("without an end", "initial begin a = (b; c = 1", "a");
    row("nothing", "", "");
    row("escaped names", "initial \\a+b  = 1;", "a+b");
}

void TestWrittenNames::areFoundInProcesses()
{
    QFETCH(QByteArray, process);
    QFETCH(QString, written);
    QStringList found;
    for (const WrittenName &name : writtenNames(VerilogTokens(process, true))) {
        QString text = QString::fromUtf8(name.path);
        text += (text.isEmpty() ? QString() : QStringLiteral(".")) + QString::fromUtf8(name.name);
        if (name.left >= 0)
            text += QStringLiteral("[%1:%2]").arg(name.left).arg(name.right);
        found.append(text);
    }
    QCOMPARE(found.join(QLatin1Char(' ')), written);
}

TARN_TEST_MAIN(TestWrittenNames)
#include "tst_writtennames.moc"
