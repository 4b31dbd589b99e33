// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/vhdl/vhdlname.h>
#include <netweir/internal/vhdl/vhdltokens.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;

namespace {

/// A letter for the kind and the text, and "@OFFSET:LINE:COLUMN" when that is asked for.
QByteArray tokenText(const VhdlToken &token, bool withPosition)
{
    static const char letters[] = "-iknctbp#";
    QByteArray text = letters[token.kind] + token.bytes();
    if (token.extended)
        text += '!';
    if (withPosition)
        text += '@' + QByteArray::number(token.offset) + ':' + QByteArray::number(token.line) +
                ':' + QByteArray::number(token.column);
    return text;
}

QByteArray tokensText(VhdlTokens tokens, bool withPosition = false)
{
    QByteArrayList texts;
    for (VhdlToken token = tokens.next(); token.kind != VhdlToken::EndOfText; token = tokens.next())
        texts.append(tokenText(token, withPosition));
    return texts.join(' ');
}

int countOfTokens(const QByteArray &text)
{
    VhdlTokens tokens(text);
    int number = 0;
    while (tokens.next().kind != VhdlToken::EndOfText)
        ++number;
    return number;
}

} // namespace

class TestVhdlTokens : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void areTold_data();
    void areTold();
    void signsHaveNames_data();
    void signsHaveNames();
    void knowTheirPositions_data();
    void knowTheirPositions();
    void ofARangeCountFromTheWholeText();
    void commentsAreKeptOnRequest();
    void keywordsHaveAnyCase_data();
    void keywordsHaveAnyCase();
    void regionsHaveEnds();
    void coverHugeTexts();
    void namesFold_data();
    void namesFold();
};

/// Kinds: identifier, keyword, number, character, string (t), bit string, punctuation.
void TestVhdlTokens::areTold_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("tokens");
    const auto row = [](const char *name, const QByteArray &text, const QByteArray &tokens) {
        QTest::newRow(name) << text << tokens;
    };
    row("nothing", "", "");
    row("blanks", " \t\r\n\f\v", "");
    row("words", "Entity e_1 IS", "kEntity ie_1 kIS");
    row("words of some editions", "context protected parameter force default",
        "icontext iprotected iparameter iforce idefault");
    row("Latin-1", "signal \xc4\xe4_1;", "ksignal i\xc4\xe4_1 p;");
    row("UTF-8", "signal \xc3\x84x;", "ksignal i\xc3\x84x p;");
    row("byte order mark", QByteArray("\xef\xbb\xbf") + "entity", "kentity");
    row("extended names", "\\a b\\ \\c\\\\d\\.\\end\\", "i\\a b\\! i\\c\\\\d\\! p. i\\end\\!");
    row("extended name without an end", "\\a b\nc", "i\\a b! ic");
    row("numbers", "1 1_000 1.5 1e3 1.5E-3 0 1e", "n1 n1_000 n1.5 n1e3 n1.5E-3 n0 n1 ie");
    row("based numbers", "16#F_F# 2#1.0#e-2 16#F", "n16#F_F# n2#1.0#e-2 n16#F");
    row("range without blanks", "3downto 0", "n3 kdownto n0");
    row("element of a record", "a(1).b", "ia p( n1 p) p. ib");
    row("bit strings", "x\"F_0\" B\"01\" sb\"1\" 12ux\"f\" 8X\"ff\" d\"9\"",
        "bx\"F_0\" bB\"01\" bsb\"1\" b12ux\"f\" b8X\"ff\" bd\"9\"");
    row("no bit string", "xx\"1\" y\"0\" 8 x", "ixx t\"1\" iy t\"0\" n8 ix");
    row("strings", "\"a\" \"\"\"\" \"a\"\"b\" \"--\"", "t\"a\" t\"\"\"\" t\"a\"\"b\" t\"--\"");
    row("string without an end", "\"a\nb", "t\"a ib");
    row("characters", "'a' ''' '\"' ' ' '('", "c'a' c''' c'\"' c' ' c'('");
    row("characters beyond ASCII", "'\xc4' '\xc3\x84' '\xe2\x82\xac'",
        "c'\xc4' c'\xc3\x84' c'\xe2\x82\xac'");
    row("attributes", "a'b a'range a(1)'c \"x\"'d p.all'e",
        "ia p' ib ia p' krange ia p( n1 p) p' ic t\"x\" p' id ip p. kall p' ie");
    row("qualified expressions", "t'('a') t'('a','b')",
        "it p' p( c'a' p) it p' p( c'a' p, c'b' p)");
    row("characters behind words", "when 'a' => 'b'&'c'", "kwhen c'a' p=> c'b' p& c'c'");
    row("tick at the end", "('", "p( p'");
    row("tick at a line end", "('\n'", "p( p' p'");
    row("signs", "=> := <= /= >= <> ** ?? ?= ?/= ?< ?<= ?> ?>= << >>",
        "p=> p:= p<= p/= p>= p<> p** p?? p?= p?/= p?< p?<= p?> p?>= p<< p>>");
    row("signs together", "a<=b>=c:=(d=>e)", "ia p<= ib p>= ic p:= p( id p=> ie p)");
    row("sign of a matching case", "case? x", "kcase p? ix");
    row("line comment", "a -- b \"'\nc--", "ia ic");
    row("comment up to a form feed", "a -- b\fc", "ia ic");
    row("block comments", "a /* b\n-- */ c /**/ d /*/ e */ f", "ia ic id if");
    row("block comment without an end", "a /* b * / c", "ia");
    row("minus and divide", "a - b / c * d", "ia p- ib p/ ic p* id");
    row("other bytes", QByteArray("a\0`$b\x01", 6), QByteArray("ia p\0 p` p$ ib p\x01", 17));
}

void TestVhdlTokens::areTold()
{
    QFETCH(QByteArray, text);
    QTEST(tokensText(VhdlTokens(text)), "tokens");
}

void TestVhdlTokens::signsHaveNames_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<char>("sign");
    QTest::newRow("arrow") << QByteArray("=>") << char(VhdlToken::Arrow);
    QTest::newRow("becomes") << QByteArray(":=") << char(VhdlToken::Becomes);
    QTest::newRow("assignment") << QByteArray("<=") << char(VhdlToken::LessOrEqual);
    QTest::newRow("comparison") << QByteArray("?/=") << char(VhdlToken::Comparison);
    QTest::newRow("box") << QByteArray("<>") << char(VhdlToken::Box);
    QTest::newRow("power") << QByteArray("**") << char(VhdlToken::Power);
    QTest::newRow("condition") << QByteArray("??") << char(VhdlToken::Condition);
    QTest::newRow("external name") << QByteArray("<<") << char(VhdlToken::OpenExternal);
    QTest::newRow("its end") << QByteArray(">>") << char(VhdlToken::CloseExternal);
    QTest::newRow("semicolon") << QByteArray(";") << ';';
}

void TestVhdlTokens::signsHaveNames()
{
    QFETCH(QByteArray, text);
    QFETCH(char, sign);
    const VhdlToken token = VhdlTokens(text).next();
    QVERIFY(token.is(sign));
    QCOMPARE(token.bytes(), text);
}

void TestVhdlTokens::knowTheirPositions_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("tokens");
    const auto row = [](const char *name, const QByteArray &text, const char *tokens) {
        QTest::newRow(name) << text << QByteArray(tokens);
    };
    row("one line", "a  bc;", "ia@0:1:1 ibc@3:1:4 p;@5:1:6");
    row("lines", "a\n b\n\nc", "ia@0:1:1 ib@3:2:2 ic@6:4:1");
    row("two-byte line ends", "a\r\nb", "ia@0:1:1 ib@3:2:1");
    row("carriage returns", "a\rb\r\rc", "ia@0:1:1 ib@2:2:1 ic@5:4:1");
    row("form feed", "a\fb", "ia@0:1:1 ib@2:1:3");
    row("block comment", "/* \n */ a /* */ b", "ia@8:2:5 ib@16:2:13");
    row("line comment", "-- a\nb", "ib@5:2:1");
    row("string without an end", "\"a\n b", "t\"a@0:1:1 ib@4:2:2");
}

void TestVhdlTokens::knowTheirPositions()
{
    QFETCH(QByteArray, text);
    QTEST(tokensText(VhdlTokens(text), true), "tokens");
}

void TestVhdlTokens::ofARangeCountFromTheWholeText()
{
    const QByteArray text("a b\n c d e");
    QCOMPARE(tokensText(VhdlTokens(text, {5, 8}, 2, 2), true), QByteArray("ic@5:2:2 id@7:2:4"));
}

void TestVhdlTokens::commentsAreKeptOnRequest()
{
    const QByteArray text("a -- b\n/* c\n */ e\"--\"");
    QCOMPARE(tokensText(VhdlTokens(text, VhdlTokens::KeepComments), true),
             QByteArray("ia@0:1:1 #-- b@2:1:3 #/* c\n */@7:2:1 ie@16:3:5 t\"--\"@17:3:6"));
}

void TestVhdlTokens::keywordsHaveAnyCase_data()
{
    QTest::addColumn<QByteArray>("word");
    QTest::addColumn<int>("keyword");
    const auto row = [](const char *word, VhdlKeyword keyword) {
        QTest::newRow(word) << QByteArray(word) << int(keyword);
    };
    row("entity", VhdlKeyword::Entity);
    row("ENTITY", VhdlKeyword::Entity);
    row("Configuration", VhdlKeyword::Configuration);
    row("xnor", VhdlKeyword::Operator);
    row("entit", VhdlKeyword::None);
    row("configurations", VhdlKeyword::None);
    row("none", VhdlKeyword::None);
    row("operator", VhdlKeyword::None);
}

void TestVhdlTokens::keywordsHaveAnyCase()
{
    QFETCH(QByteArray, word);
    QTEST(int(vhdlKeywordOf({word.constData(), std::size_t(word.size())})), "keyword");
}

/// At every length of a text full of openings, nothing behind its end is read.
void TestVhdlTokens::regionsHaveEnds()
{
    const QByteArray whole("a'b 'c' \"d\" \\e\\ 16#f#e-1 12ux\"f\" 1.5e+3 /* f */ -- g\n"
                           "?/= << '\xe2\x82\xac'");
    for (int size = 0; size <= whole.size(); ++size) {
        const QByteArray text = whole.left(size); // A copy, so that a sanitizer sees its end.
        VhdlTokens tokens(text);
        int end = 0;
        for (VhdlToken token = tokens.next(); token.kind != VhdlToken::EndOfText;
             token = tokens.next()) {
            QVERIFY(token.offset >= end);
            QVERIFY(token.end() > token.offset);
            end = token.end();
        }
        QVERIFY(end <= size);
    }
}

void TestVhdlTokens::coverHugeTexts()
{
    constexpr int Size = 1000000;
    QCOMPARE(countOfTokens(QByteArray(Size, 'a')), 1);
    QCOMPARE(countOfTokens(QByteArray(Size, '\0')), Size);
    QCOMPARE(countOfTokens(QByteArray("x'").repeated(Size / 2)), Size);
    QCOMPARE(countOfTokens('"' + QByteArray(Size, 'a')), 1);
    QCOMPARE(countOfTokens(QByteArray(Size, '"')), 1);
    QCOMPARE(countOfTokens(QByteArray(Size, '\\')), 1);
    QCOMPARE(countOfTokens(QByteArray(Size, '-')), 0);
    QCOMPARE(countOfTokens("/*" + QByteArray(Size, '/')), 0);
    QCOMPARE(countOfTokens(QByteArray("1#").repeated(Size / 2)), Size / 4);
    QCOMPARE(countOfTokens(QByteArray("a;").repeated(Size / 2)), Size);
}

void TestVhdlTokens::namesFold_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("folded");
    QTest::newRow("lower case") << QByteArray("clk_1") << QByteArray("clk_1");
    QTest::newRow("mixed case") << QByteArray("Clk_A") << QByteArray("clk_a");
    QTest::newRow("extended") << QByteArray("\\Clk A\\") << QByteArray("\\Clk A\\");
    QTest::newRow("Latin-1") << QByteArray("\xc4\xd6\xdf\xe4") << QByteArray("\xe4\xf6\xdf\xe4");
    QTest::newRow("no letters") << QByteArray("\xd7\xf7") << QByteArray("\xd7\xf7");
}

void TestVhdlTokens::namesFold()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, folded);
    QCOMPARE(foldedVhdlName(name), folded);
    QVERIFY(sameVhdlName(name, folded));
    QCOMPARE(foldedVhdlNames({"A", name}), QByteArrayList({"a", folded}));
    QVERIFY(!sameVhdlName(name, "x"));
}

TARN_TEST_MAIN(TestVhdlTokens)
#include "tst_vhdltokens.moc"
