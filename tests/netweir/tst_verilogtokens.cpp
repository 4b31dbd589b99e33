// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/verilog/verilogtokens.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;

namespace {

/// A letter for the kind, the text or the sign, and "@OFFSET:LINE" when that is asked for.
QByteArray tokenText(const Token &token, bool withPosition)
{
    static const char letters[] = "-iknsp";
    QByteArray text(1, letters[token.kind]);
    if (token.kind == Token::Punctuation)
        text += token.is(Token::Scope) ? QByteArray("::") : QByteArray(1, token.punctuation);
    text += toBytes(token.text);
    if (token.escaped)
        text += '\\';
    if (withPosition)
        text += '@' + QByteArray::number(token.offset) + ':' + QByteArray::number(token.line);
    return text;
}

QByteArray tokensText(VerilogTokens tokens, bool withPosition = false)
{
    QByteArrayList texts;
    for (Token token = tokens.next(); token.kind != Token::EndOfText; token = tokens.next())
        texts.append(tokenText(token, withPosition));
    return texts.join(' ');
}

} // namespace

class TestVerilogTokens : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void areTold_data();
    void areTold();
    void knowTheirPositions_data();
    void knowTheirPositions();
    void ofARangeCountFromTheWholeText();
    void keywordsBelongToALanguage_data();
    void keywordsBelongToALanguage();
    void directivesChangeTheLanguage_data();
    void directivesChangeTheLanguage();
    void regionsHaveEnds();
    void blocksAreCounted_data();
    void blocksAreCounted();
    void wordsMayBeNames_data();
    void wordsMayBeNames();
};

/// Kinds: identifier, keyword, number, string, punctuation.
void TestVerilogTokens::areTold_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("tokens");
    const auto row = [](const char *name, const QByteArray &text, const char *tokens) {
        QTest::newRow(name) << text << QByteArray(tokens);
    };
    row("nothing", "", "");
    row("blanks", " \t\r\n\f\v", "");
    row("words", "module m_1$; Module", "kmodule im_1$ p; iModule");
    row("bytes beyond ASCII", "m\xc3\xa4 = 1", "im\xc3\xa4 p= n1");
    row("system name", "$display(a)", "i$display p( ia p)");
    row("escaped name", "\\a+b[0] c", "ia+b[0]\\ ic");
    row("escaped keyword", "\\module \\$x;\n;", "imodule\\ i$x;\\ p;");
    row("escaped name at the end", "\\a", "ia\\");
    row("scope", "a::b : c", "ia p:: ib p: ic");
    row("three colons", ":::", "p:: p:");
    row("signs", "<=+*#@", "p< p= p+ p* p# p@");
    row("line comment", "a // b\nc", "ia ic");
    row("line comment at the end", "a // b", "ia");
    row("block comment", "a /* b\n* / */ c", "ia ic");
    row("block comment without an end", "a /* b", "ia");
    row("star of a block comment counts once", "/*/ a */ b", "ib");
    row("no comment", "a / b", "ia p/ ib");
    row("string", "\"a // b\" c", "s ic");
    row("string with quotes", "\"a\\\"b\\\\\" c", "s ic");
    row("string over lines", "\"a\\\nb\" c", "s ic");
    row("string without an end", "\"a\nb", "s ib");
    row("number", "12 1_000 3x", "n12 n1_000 n3x");
    row("fraction", "0.5", "n0 p. n5");
    row("based number", "8'hFF a", "n8 n ia");
    row("signed number", "'sd12 'SB0 a", "n n ia");
    row("base apart from its digits", "8 'h \tF? a", "n8 n ia");
    row("digits that are unknown", "4'b1??x a", "n4 n ia");
    row("unsized bit", "'0 'x a", "n n ia");
    row("cast", "t'(b)", "it n p( ib p)");
    row("assignment pattern", "'{s: 1}", "n p{ is p: n1 p}");
    row("sign alone", "'s (", "n p(");
    row("directive", "`resetall a", "ia");
    row("directive with a line", "`default_nettype none a\n`pragma b c\n`unconnected_drive d\ne",
        "ie");
    row("time scale", "`timescale 1ns/1ps a", "ia");
    row("time scale with blanks", "`timescale \t1  ns / 10 \tps\ta", "ia");
    row("half a time scale", "`timescale 1ns a", "ia");
    row("no time scale", "`timescale a", "ia");
    row("time scale at the end", "`timescale 1", "");
    row("backtick alone", "a ` b", "ia ib");
}

void TestVerilogTokens::areTold()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, tokens);
    QCOMPARE(tokensText(VerilogTokens(text, true)), tokens);
    // Bytes after the text do not count.
    QByteArray longer = text + "\"'*/hFF";
    QCOMPARE(tokensText(VerilogTokens(longer, true, {0, text.size()})), tokens);
}

void TestVerilogTokens::knowTheirPositions_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("tokens");
    const auto row = [](const char *name, const char *text, const char *tokens) {
        QTest::newRow(name) << QByteArray(text) << QByteArray(tokens);
    };
    row("lines", "a\n  b\n\nc", "ia@0:1 ib@4:2 ic@7:4");
    row("comments", "/*\n\n*/ a // b\nc", "ia@7:3 ic@14:4");
    row("string over lines", "\"\\\n\" a", "s@0:1 ia@5:2");
    row("escaped name", " \\a b", "ia\\@1:1 ib@4:1");
    row("directives", "`pragma a\nb `timescale 1ns/1ps c", "ib@10:2 ic@31:2");
}

void TestVerilogTokens::knowTheirPositions()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, tokens);
    QCOMPARE(tokensText(VerilogTokens(text, true), true), tokens);
}

void TestVerilogTokens::ofARangeCountFromTheWholeText()
{
    const QByteArray text = "a\nb\nc d";
    VerilogTokens tokens(text, false, {2, 5});
    QCOMPARE(tokensText(tokens, true), QByteArray("ib@2:1 ic@4:2"));
    tokens.next();
    QCOMPARE(tokens.position(), 3);
    const VerilogTokens copy = tokens;
    tokens.next();
    QCOMPARE(tokens.position(), 5);
    QCOMPARE(tokensText(copy), QByteArray("ic"));
}

void TestVerilogTokens::keywordsBelongToALanguage_data()
{
    QTest::addColumn<QByteArray>("word");
    QTest::addColumn<int>("verilog");
    QTest::addColumn<int>("systemVerilog");
    const auto row = [](const char *word, Keyword verilog, Keyword systemVerilog) {
        QTest::newRow(word) << QByteArray(word) << int(verilog) << int(systemVerilog);
    };
    row("module", Keyword::Module, Keyword::Module);
    row("macromodule", Keyword::Module, Keyword::Module);
    row("initial", Keyword::Always, Keyword::Always);
    row("casez", Keyword::Case, Keyword::Case);
    row("wire", Keyword::Other, Keyword::Other);
    row("and", Keyword::Other, Keyword::Other);
    row("xor", Keyword::Other, Keyword::Other);
    row("logic", Keyword::None, Keyword::Other);
    row("accept_on", Keyword::None, Keyword::Other);
    row("within", Keyword::None, Keyword::Other);
    row("always_ff", Keyword::None, Keyword::Always);
    row("import", Keyword::None, Keyword::Extern);
    row("expect", Keyword::None, Keyword::Expect);
    row("randsequence", Keyword::None, Keyword::Randsequence);
    row("Module", Keyword::None, Keyword::None);
    row("modul", Keyword::None, Keyword::None);
    row("and assign", Keyword::None, Keyword::None);
    row("", Keyword::None, Keyword::None);
}

void TestVerilogTokens::keywordsBelongToALanguage()
{
    QFETCH(QByteArray, word);
    QFETCH(int, verilog);
    QFETCH(int, systemVerilog);
    const std::string_view text(word.constData(), size_t(word.size()));
    QCOMPARE(int(keywordOf(text, false)), verilog);
    QCOMPARE(int(keywordOf(text, true)), systemVerilog);
    const int none = int(Keyword::None);
    QCOMPARE(isSystemVerilogWord(word), verilog == none && systemVerilog != none);
}

void TestVerilogTokens::directivesChangeTheLanguage_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("verilog");
    QTest::addColumn<QByteArray>("systemVerilog");
    const auto row = [](const char *name, const char *text, const char *verilog,
                        const char *systemVerilog) {
        QTest::newRow(name) << QByteArray(text) << QByteArray(verilog) << QByteArray(systemVerilog);
    };
    row("none", "bit", "ibit", "kbit");
    row("Verilog", "`begin_keywords \"1364-2005\" bit\nbit `end_keywords bit", "ibit ibit",
        "ibit kbit");
    row("SystemVerilog", "`begin_keywords \"1800-2012\" bit\nbit `end_keywords bit", "kbit ibit",
        "kbit kbit");
}

void TestVerilogTokens::directivesChangeTheLanguage()
{
    QFETCH(QByteArray, text);
    QTEST(tokensText(VerilogTokens(text, false)), "verilog");
    QTEST(tokensText(VerilogTokens(text, true)), "systemVerilog");
}

void TestVerilogTokens::regionsHaveEnds()
{
    QCOMPARE(endOf(Keyword::Module), Keyword::Endmodule);
    QCOMPARE(endOf(Keyword::Covergroup), Keyword::Endgroup);
    QCOMPARE(endOf(Keyword::Task), Keyword::Endtask);
    QCOMPARE(endOf(Keyword::Begin), Keyword::None); // Blocks nest.
    QCOMPARE(endOf(Keyword::None), Keyword::None);
}

void TestVerilogTokens::blocksAreCounted_data()
{
    QTest::addColumn<QByteArray>("words"); // The last one counts.
    QTest::addColumn<int>("step");
    QTest::newRow("begin") << QByteArray("a begin") << 1;
    QTest::newRow("case") << QByteArray("; casex") << 1;
    QTest::newRow("fork") << QByteArray("begin fork") << 1;
    QTest::newRow("disable fork") << QByteArray("disable fork") << 0;
    QTest::newRow("wait fork") << QByteArray("wait fork") << 0;
    QTest::newRow("random sequence") << QByteArray("; randsequence") << 1;
    QTest::newRow("end") << QByteArray("; end") << -1;
    QTest::newRow("endcase") << QByteArray("; endcase") << -1;
    QTest::newRow("join_any") << QByteArray("; join_any") << -1;
    QTest::newRow("endsequence") << QByteArray("; endsequence") << -1;
    QTest::newRow("escaped begin") << QByteArray("; \\begin") << 0;
    QTest::newRow("if") << QByteArray("; if") << 0;
}

void TestVerilogTokens::blocksAreCounted()
{
    QFETCH(QByteArray, words);
    VerilogTokens tokens(words, true);
    const Token previous = tokens.next();
    QTEST(blockStep(tokens.next(), previous), "step");
}

void TestVerilogTokens::wordsMayBeNames_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("isWord"); // "$begin" or "begin".
    QTest::addColumn<bool>("isSystemName");
    QTest::newRow("keyword") << QByteArray("begin") << true << false;
    QTest::newRow("escaped keyword") << QByteArray("\\begin ") << true << false;
    QTest::newRow("other name") << QByteArray("begins") << false << false;
    QTest::newRow("system name") << QByteArray("$begin") << true << true;
    QTest::newRow("escaped system name") << QByteArray("\\$begin ") << true << false;
    QTest::newRow("sign") << QByteArray("(") << false << false;
    QTest::newRow("string") << QByteArray("\"begin\"") << false << false;
    QTest::newRow("number") << QByteArray("1") << false << false;
    QTest::newRow("nothing") << QByteArray() << false << false;
}

void TestVerilogTokens::wordsMayBeNames()
{
    QFETCH(QByteArray, text);
    const Token token = VerilogTokens(text, true).next();
    QTEST(isWord(token, "begin") || isWord(token, "$begin"), "isWord");
    QTEST(isSystemName(token), "isSystemName");
    QVERIFY(!isWord(token, token.kind == Token::Number ? "1" : ""));
}

TARN_TEST_MAIN(TestVerilogTokens)
#include "tst_verilogtokens.moc"
