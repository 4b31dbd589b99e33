// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/verilog/textitems.h>

#include <support/processortime.h>
#include <support/testcase.h>

#include <QApplication>
#include <QTest>

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
    row("no users", "module m; assert property ($); endmodule", {});
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
    QTest::addColumn<QByteArray>("text"); // The item begins it.
    QTest::addColumn<QByteArray>("written");
    const auto row = [](const char *name, const char *text, const char *written) {
        QTest::newRow(name) << QByteArray(text) << QByteArray(written);
    };
    row("process", "initial begin a = b; end c = d;", "a");
    row("assignment", "assign a = b, c = d; e = f;", "a c");
    row("assertion without statements", "assert property (a = b); c = d;", "");
    row("statements of an assertion", "assert property (a = b) c = d; else e = f; g = h;", "c e");
}

void TestTextItems::tellWhatTheyWrite()
{
    QFETCH(QByteArray, text);
    const TextItems items(text, true);
    const QVector<TextItem> around = items.around(1, 1);
    QCOMPARE(around.size(), 1);
    QByteArrayList names;
    for (const WrittenName &name : items.writtenBy(around.first()))
        names.append(name.name);
    QTEST(names.join(' '), "written");
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
