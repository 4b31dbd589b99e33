// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/verilog/textitems.h>

#include <support/processortime.h>
#include <support/testcase.h>

#include <QApplication>
#include <QtTest>

using namespace NETWEIR::Internal;

namespace {

QString kindText(TextItem::Kind kind)
{
    static const char *const texts[] = {"assertion", "property",   "sequence",  "covergroup",
                                        "clocking",  "let",        "checker",   "constraint",
                                        "config",    "class",      "statement", "process",
                                        "module",    "assignment", "unit"};
    return QString::fromLatin1(texts[kind]);
}

/// "KIND NAME@LINE in UNIT <text without blanks at line ends>"
QString itemText(const TextItem &item, const QByteArray &text)
{
    const QByteArray content = text.mid(item.range.begin, item.range.end - item.range.begin);
    return QStringLiteral("%1 %2@%3 in %4 <%5>")
        .arg(kindText(item.kind), QString::fromUtf8(item.name), QString::number(item.line),
             QString::fromUtf8(item.unit), QString::fromUtf8(content));
}

} // namespace

class TestTextItems : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void areFoundAroundAPosition_data();
    void areFoundAroundAPosition();
    void haveUsers_data();
    void haveUsers();
    void tellWhatTheyWrite_data();
    void tellWhatTheyWrite();
    void tellWordsBeyondTheGrammar_data();
    void tellWordsBeyondTheGrammar();
    void takeAnyText_data();
    void takeAnyText();
    void takeTimeLinearInTheText();
};

/// The position is that of the dollar sign in the text.
void TestTextItems::areFoundAroundAPosition_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("items");
    const auto row = [](const char *name, const char *text, const QStringList &items) {
        QTest::newRow(name) << QByteArray(text) << items;
    };
    const auto s = [](const char *text) { return QString::fromUtf8(text); };
    row("nothing", " $ ", {});
    row("module only", "module m;\nwire $a;\nendmodule",
        {s("module m@1 in m <module m;\nwire $a;\nendmodule>")});
    row("the second module", "module a; endmodule module b; $ endmodule : b wire x;",
        {s("module b@1 in b <module b; $ endmodule : b>")});
    row("between modules", "module a; endmodule $ module b; endmodule", {});
    row("a module with an attribute", "(* x = 1 *) module a; $ endmodule",
        {s("module a@1 in a <(* x = 1 *) module a; $ endmodule>")});
    row("interface", "interface i; $ endinterface",
        {s("unit i@1 in i <interface i; $ endinterface>")});
    row("what is no unit", "extern module a(input b); typedef virtual interface i v; $", {});
    row("assertion", "module m; a: assert property (x |-> $ y) else z; wire w; endmodule",
        {s("assertion @1 in m <a: assert property (x |-> $ y) else z;>"),
         s("module m@1 in m <module m; a: assert property (x |-> $ y) else z; wire w; "
           "endmodule>")});
    row("behind an assertion", "module m; assert property (x); wire $; endmodule",
        {s("module m@1 in m <module m; assert property (x); wire $; endmodule>")});
    row("assertion with actions",
        "module m; cover property (x) begin $ end else if (a) b; else c; endmodule",
        {s("assertion @1 in m <cover property (x) begin $ end else if (a) b; else c;>"),
         s("module m@1 in m <module m; cover property (x) begin $ end else if (a) b; else c; "
           "endmodule>")});
    row("assertion of a generated case",
        "module m; case (1) A: assert property ($); endcase endmodule",
        {s("assertion @1 in m <assert property ($);>"),
         s("module m@1 in m <module m; case (1) A: assert property ($); endcase endmodule>")});
    row("assertion in a process",
        "module m; always @(*) begin case (a) 1: assert ($); endcase l: assert (b); end endmodule",
        {s("assertion @1 in m <assert ($);>"),
         s("process @1 in m <always @(*) begin case (a) 1: assert ($); endcase l: assert (b); "
           "end>"),
         s("module m@1 in m <module m; always @(*) begin case (a) 1: assert ($); endcase l: "
           "assert (b); end endmodule>")});
    row("labelled assertion in a process", "initial begin l: assume #0 ($); end",
        {s("assertion @1 in  <l: assume #0 ($);>"),
         s("process @1 in  <initial begin l: assume #0 ($); end>")});
    row("property", "property p;\n$ endproperty : p wire a;",
        {s("property p@1 in  <property p;\n$ endproperty : p>")});
    row("sequence in a package", "package k; sequence s(x); $ endsequence endpackage",
        {s("sequence s@1 in  <sequence s(x); $ endsequence>")});
    row("covergroup", "covergroup c @(posedge a); $ endgroup",
        {s("covergroup c@1 in  <covergroup c @(posedge a); $ endgroup>")});
    row("clocking", "default clocking c @(posedge a); $ endclocking",
        {s("clocking c@1 in  <default clocking c @(posedge a); $ endclocking>")});
    row("name of a clocking", "default clocking $c; wire a;",
        {s("clocking @1 in  <default clocking $c;>")});
    row("default disable", "default disable iff ($); wire a;",
        {s("clocking @1 in  <default disable iff ($);>")});
    row("let", "let f(a) = $; wire b;", {s("let f@1 in  <let f(a) = $;>")});
    row("assertion in a checker", "checker c; assert property ($); endchecker",
        {s("assertion @1 in  <assert property ($);>"),
         s("checker c@1 in  <checker c; assert property ($); endchecker>")});
    row("constraint", "class c; constraint k { a < 3; $ } int b; endclass",
        {s("constraint k@1 in  <constraint k { a < 3; $ }>"),
         s("class c@1 in  <class c; constraint k { a < 3; $ } int b; endclass>")});
    row("class", "typedef class c; virtual class automatic c; class d; endclass $ endclass : c",
        {s("class c@1 in  <virtual class automatic c; class d; endclass $ endclass : c>")});
    row("program", "program p; $ endprogram", {s("module p@1 in p <program p; $ endprogram>")});
    row("config", "config c; design $ x; endconfig",
        {s("config c@1 in  <config c; design $ x; endconfig>")});
    row("process",
        "module m;\n  always_ff @(posedge c)\n if (a) $b <= 1; else begin b <= 0; end\n"
        "wire w; endmodule",
        {s("process @2 in m <always_ff @(posedge c)\n if (a) $b <= 1; else begin b <= 0; end>"),
         s("module m@1 in m <module m;\n  always_ff @(posedge c)\n if (a) $b <= 1; else begin b <= "
           "0; end\nwire w; endmodule>")});
    row("assignment", "module m; assign a = $ b; endmodule",
        {s("module m@1 in m <module m; assign a = $ b; endmodule>"),
         s("assignment @1 in m <assign a = $ b;>")});
    row("an item without an end", "module m; assert property ((a ; endmodule module n; $ endmodule",
        {s("module n@1 in n <module n; $ endmodule>")});
    row("within an item without an end", "module m; initial begin $ endmodule",
        {s("module m@1 in m <module m; initial begin $ endmodule>")});
    row("old word as a name in a process", "initial randsequence = $1; wire a;",
        {s("process @1 in  <initial randsequence = $1;>")});
    row("old words as names", "module m; wire property; assign property = $1; endmodule",
        {s("module m@1 in m <module m; wire property; assign property = $1; endmodule>"),
         s("assignment @1 in m <assign property = $1;>")});
}

void TestTextItems::areFoundAroundAPosition()
{
    QFETCH(QByteArray, text);
    QFETCH(QStringList, items);
    const bool isSystemVerilog = !QByteArray(QTest::currentDataTag()).startsWith("old");
    const int at = text.indexOf('$');
    const int line = text.left(at).count('\n') + 1;
    const int column = at - text.left(at).lastIndexOf('\n');
    QStringList found;
    const QVector<TextItem> around = TextItems(text, isSystemVerilog).around(line, column);
    for (const TextItem &item : around)
        found.append(itemText(item, text));
    QCOMPARE(found, items);
}

void TestTextItems::haveUsers_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("users");
    const auto row = [](const char *name, const char *text, const QStringList &users) {
        QTest::newRow(name) << QByteArray(text) << users;
    };
    const auto s = [](const char *text) { return QString::fromUtf8(text); };
    row("property",
        "module m; property p; $ endproperty assert property (p); wire p2; initial p = 1; "
        "endmodule module n; assert property (p); endmodule",
        {s("assertion @1 in m <assert property (p);>")});
    row("covergroup",
        "module m; covergroup g; $ endgroup g a = new(), b; initial begin a.sample(); c = a; end "
        "endmodule",
        {s("statement a@1 in  <g a = new(), b;>"), s("statement @1 in  <a.sample();>")});
    row("clocking", "module m; clocking c @(posedge k); $ endclocking initial c.a <= 1; endmodule",
        {s("process @1 in m <initial c.a <= 1;>")});
    row("nobody", "module m; assert property ($); endmodule", {});
}

void TestTextItems::haveUsers()
{
    QFETCH(QByteArray, text);
    QFETCH(QStringList, users);
    const TextItems items(text, true);
    QStringList found;
    const QVector<TextItem> around = items.around(1, text.indexOf('$') + 1);
    QVERIFY(!around.isEmpty());
    const QVector<TextItem> result = items.usersOf({around.first()});
    for (const TextItem &item : result)
        found.append(itemText(item, text));
    QCOMPARE(found, users);
}

void TestTextItems::tellWhatTheyWrite_data()
{
    QTest::addColumn<QByteArray>("process");
    QTest::addColumn<QString>("written");
    const auto row = [](const char *name, const char *process, const char *written) {
        QTest::newRow(name) << QByteArray(process) << QString::fromLatin1(written);
    };
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
    row("escaped names", "initial \\a+b  = 1;", "a+b");
}

void TestTextItems::tellWhatTheyWrite()
{
    QFETCH(QByteArray, process);
    QFETCH(QString, written);
    const TextItems items(process, true);
    const QVector<TextItem> around = items.around(1, 1);
    QCOMPARE(around.size(), 1);
    QCOMPARE(around.first().kind, TextItem::Process);
    QStringList found;
    const QVector<WrittenName> names = items.writtenBy(around.first());
    for (const WrittenName &name : names) {
        QString text = QString::fromUtf8(name.path);
        text += (text.isEmpty() ? QString() : QStringLiteral(".")) + QString::fromUtf8(name.name);
        if (name.left >= 0)
            text += QStringLiteral("[%1:%2]").arg(name.left).arg(name.right);
        found.append(text);
    }
    QCOMPARE(found.join(QLatin1Char(' ')), written);
}

void TestTextItems::tellWordsBeyondTheGrammar_data()
{
    QTest::addColumn<QByteArray>("process");
    QTest::addColumn<bool>("beyond");
    QTest::addColumn<bool>("beyondVerilog");
    const auto row = [](const char *name, const QByteArray &process, bool beyond,
                        bool beyondVerilog = false) {
        QTest::newRow(name) << process << beyond << beyondVerilog;
    };
    row("plain", "initial begin a <= #1 b; repeat (2) c = 1; end", false);
    row("in a string", "initial $display(\"expect ##\");", false);
    row("cycles", "initial begin ##2 a = 1; end", true);
    row("random sequence", "initial randsequence (a) endsequence", true);
    row("pattern", "initial case (a) matches endcase", true);
    row("repeated event", "initial a <= repeat (2) @(b) c;", true, true);
    row("guarded event", "always @(posedge a iff b) c <= d;", true);
}

void TestTextItems::tellWordsBeyondTheGrammar()
{
    QFETCH(QByteArray, process);
    QFETCH(bool, beyond);
    QFETCH(bool, beyondVerilog);
    const TextItems items(process, true);
    QCOMPARE(items.isBeyondGrammar(items.around(1, 1).value(0)), beyond);
    const TextItems verilog(process, false);
    QCOMPARE(verilog.isBeyondGrammar(verilog.around(1, 1).value(0)), beyondVerilog);
}

void TestTextItems::takeAnyText_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("ends only") << QByteArray("endmodule endproperty end endcase join ) ] }");
    QTest::newRow("begins only") << QByteArray(
        "module m; property p sequence covergroup clocking checker let assert always default");
    QTest::newRow("open brackets") << QByteArray("module m; always ((([[[{{{ assert (");
    QTest::newRow("open attribute") << QByteArray("module m; (* assert always");
    QTest::newRow("open string") << QByteArray("module m; initial \"assert always");
}

void TestTextItems::takeAnyText()
{
    QFETCH(QByteArray, text);
    const TextItems items(text, true);
    for (int column = 0; column <= text.size() + 2; ++column) {
        for (const TextItem &item : items.around(1, column)) {
            QVERIFY(item.range.begin < item.range.end && item.range.end <= text.size());
            items.writtenBy(item);
            items.usersOf({item});
        }
    }
    QVERIFY(items.around(1000, 1000).size() <= 2);
}

void TestTextItems::takeTimeLinearInTheText()
{
    const auto timeOf = [](int count) {
        QByteArray text("module m;\n");
        for (int i = 0; i < count; ++i)
            text += "assert property (a) else assert (b) begin end always begin assert (c); x = 1; "
                    "end\n";
        text += "endmodule\n";
        const qint64 begun = TarnTest::processorNanoseconds();
        const TextItems items(text, true);
        for (int line = 1; line < 100; ++line)
            items.around(line * count / 100, 5);
        QVector<TextItem> properties;
        for (int i = 0; i < 100; ++i)
            properties.append(items.around(1 + i * count / 100, 5).value(0));
        for (int i = 0; i < properties.size(); ++i) {
            properties[i].kind = TextItem::Property;
            properties[i].name = 'p' + QByteArray::number(i);
        }
        items.usersOf(properties);
        return TarnTest::processorNanoseconds() - begun;
    };
    timeOf(1000);
    const qint64 small = timeOf(8000);
    const qint64 large = timeOf(40000);
    QVERIFY2(large < 20 * small, qPrintable(QStringLiteral("%1 to %2").arg(large).arg(small)));
}

TARN_TEST_MAIN(TestTextItems)
#include "tst_textitems.moc"
