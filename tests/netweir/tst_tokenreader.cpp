// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/verilog/tokenreader.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;

namespace {

/// The part of @p text that @p skip skips, after "open:" when it finds no end.
template <typename Skip>
QByteArray skipped(const QByteArray &text, const Skip &skip, bool systemVerilog = true)
{
    TokenReader reader(VerilogTokens(text, systemVerilog));
    const bool ends = skip(&reader);
    return (ends ? "" : "open:") + text.left(reader.end());
}

void addColumns()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("expected");
}

void row(const char *name, const char *text, const char *expected)
{
    QTest::newRow(name) << QByteArray(text) << QByteArray(expected);
}

} // namespace

class TestTokenReader : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void looksOneTokenAhead();
    void skipsGroups_data();
    void skipsGroups();
    void skipsAttributes_data();
    void skipsAttributes();
    void skipsLabels_data();
    void skipsLabels();
    void skipsPastAKeyword_data();
    void skipsPastAKeyword();
    void skipsToTheSemicolon_data();
    void skipsToTheSemicolon();
    void skipsConstraints_data();
    void skipsConstraints();
    void skipsStatements_data();
    void skipsStatements();
};

void TestTokenReader::looksOneTokenAhead()
{
    const QByteArray text("a (* b");
    TokenReader reader(VerilogTokens(text, false));
    QCOMPARE(toBytes(reader.token().text), QByteArray("a"));
    QVERIFY(reader.following().is('('));
    QVERIFY(!reader.atAttribute());
    QCOMPARE(reader.end(), 0);
    const TokenReader copy(reader.tokens(), reader.token());
    reader.advance();
    QCOMPARE(reader.end(), 1);
    QVERIFY(reader.atAttribute());
    reader.advance();
    reader.advance();
    QVERIFY(!reader.atEnd());
    reader.advance();
    QVERIFY(reader.atEnd() && reader.atUnitEnd());
    QCOMPARE(reader.end(), 6);
    QCOMPARE(toBytes(copy.token().text), QByteArray("a"));
    QVERIFY(copy.following().is('('));
}

void TestTokenReader::skipsGroups_data()
{
    addColumns();
    row("parentheses", "(a) b", "(a)");
    row("nested", "([{}]()) b", "([{}]())");
    row("of any kind", "(a] b", "(a]"); // Only their number counts.
    row("not in front of one", "a (b)", "open:");
    row("not at a closing bracket", ") a", "open:");
    row("without an end", "(a (b)", "open:(a (b)");
    row("up to the end of the module", "(a endmodule )", "open:(a");
}

void TestTokenReader::skipsGroups()
{
    QFETCH(QByteArray, text);
    QTEST(skipped(text, [](TokenReader *reader) { return reader->skipGroup(); }), "expected");
}

void TestTokenReader::skipsAttributes_data()
{
    addColumns();
    row("attribute", "(* a *) b", "(* a *)");
    row("value", "(* a = (1 * 2) *) b", "(* a = (1 * 2) *)");
    row("without an end", "(* a ) b", "(* a ) b");
    row("up to the end of the module", "(* a endmodule *)", "(* a");
}

void TestTokenReader::skipsAttributes()
{
    QFETCH(QByteArray, text);
    const auto skip = [](TokenReader *reader) {
        reader->skipAttribute();
        return true;
    };
    QTEST(skipped(text, skip), "expected");
}

void TestTokenReader::skipsLabels_data()
{
    addColumns();
    row("label", ": a b", ": a");
    row("keyword", ": begin", ":");
    row("none", "a : b", "");
}

void TestTokenReader::skipsLabels()
{
    QFETCH(QByteArray, text);
    const auto skip = [](TokenReader *reader) {
        reader->skipLabel();
        return true;
    };
    QTEST(skipped(text, skip), "expected");
}

void TestTokenReader::skipsPastAKeyword_data()
{
    addColumns();
    row("keyword", "task a; endtask b", "task a; endtask");
    row("label", "endtask : a b", "endtask : a");
    row("without one", "task a;", "task a;");
    row("up to the end of the module", "task a; endmodule endtask", "task a;");
}

void TestTokenReader::skipsPastAKeyword()
{
    QFETCH(QByteArray, text);
    const auto skip = [](TokenReader *reader) {
        reader->skipPast(Keyword::Endtask);
        return true;
    };
    QTEST(skipped(text, skip), "expected");
}

void TestTokenReader::skipsToTheSemicolon_data()
{
    addColumns();
    row("statement", "a = b; c", "a = b;");
    row("semicolon", "; a", ";");
    row("in a group", "for (a; b) c; d", "for (a; b) c;");
    row("without one", "a b", "open:a b");
    row("up to the end of the module", "a endmodule ;", "open:a");
}

void TestTokenReader::skipsToTheSemicolon()
{
    QFETCH(QByteArray, text);
    QTEST(skipped(text, [](TokenReader *reader) { return reader->skipToSemicolon(); }), "expected");
}

void TestTokenReader::skipsConstraints_data()
{
    addColumns();
    row("constraint", "constraint a { b < 3; if (c) { d; } } e",
        "constraint a { b < 3; if (c) { d; } }");
    row("prototype", "constraint a; b", "constraint a;");
    row("without an end", "constraint a { b; { c }", "open:constraint a { b; { c }");
    row("without a body", "constraint a", "open:constraint a");
    row("up to the end of the module", "constraint a endmodule { }", "open:constraint a");
}

void TestTokenReader::skipsConstraints()
{
    QFETCH(QByteArray, text);
    QTEST(skipped(text, [](TokenReader *reader) { return reader->skipConstraint(); }), "expected");
}

void TestTokenReader::skipsStatements_data()
{
    addColumns();
    row("assignment", "always a = b; c;", "always a = b;");
    row("block", "initial begin a; b; end c;", "initial begin a; b; end");
    row("label", "initial begin : l a; end : l c;", "initial begin : l a; end : l");
    row("if", "initial if (a) b; c;", "initial if (a) b;");
    row("else", "initial if (a) b; else c; d;", "initial if (a) b; else c;");
    row("else of the outer if", "initial if (a) if (b) c; else d; else e; f;",
        "initial if (a) if (b) c; else d; else e;");
    row("else of another item", "always a = b; else c;", "always a = b;");
    row("else behind both", "initial if (a) b; else c; else d;", "initial if (a) b; else c;");
    row("else behind a block", "initial if (a) begin if (b) c; end else d; e;",
        "initial if (a) begin if (b) c; end else d;");
    row("case", "initial case (a) 1: b; default: c; endcase d;",
        "initial case (a) 1: b; default: c; endcase");
    row("fork", "initial fork a; b; join_none c;", "initial fork a; b; join_none");
    row("disable fork", "initial begin disable fork; end a;", "initial begin disable fork; end");
    row("semicolon in a group", "initial for (a; b; c) d; e;", "initial for (a; b; c) d;");
    row("assertion with actions", "assert (a) b; else c; d;", "assert (a) b; else c;");
    row("expect with actions", "initial expect (a) b; else c; d;", "initial expect (a) b; else c;");
    row("random sequence", "initial randsequence (a) a: b; b: {c;}; endsequence d;",
        "initial randsequence (a) a: b; b: {c;}; endsequence");
    row("end too many", "initial end a;", "open:initial end");
    row("without an end", "initial begin a;", "open:initial begin a;");
    row("up to the end of the module", "initial begin endmodule end", "open:initial begin");
    // In Verilog these words are names.
    row("old random sequence", "initial randsequence = 1; c;", "initial randsequence = 1;");
    row("old expect", "always if (a) expect = 1; else b; else c;",
        "always if (a) expect = 1; else b;");
}

void TestTokenReader::skipsStatements()
{
    QFETCH(QByteArray, text);
    const bool isSystemVerilog = !QByteArray(QTest::currentDataTag()).startsWith("old");
    QTEST(skipped(
              text, [](TokenReader *reader) { return reader->skipStatement(); }, isSystemVerilog),
          "expected");
}

TARN_TEST_MAIN(TestTokenReader)
#include "tst_tokenreader.moc"
