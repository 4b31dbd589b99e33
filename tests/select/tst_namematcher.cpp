// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/testcase.h>

#include <select/namematcher.h>
#include <select/netsearch.h>

#include <QApplication>
#include <QRandomGenerator>
#include <QTest>

using namespace TARN;

namespace {

/// Texts made of few letters, so that random patterns match random names often. Some of the
/// letters fold to one another in one way of comparing and not in another.
class RandomTexts
{
public:
    RandomTexts() { changeLetters(); }

    /// Uses other letters from now on.
    void changeLetters()
    {
        for (QString &letter : m_letters)
            letter = one(m_allLetters);
    }

    QString name(int longest = 12)
    {
        QString result;
        for (int i = m_random.bounded(longest + 1); i > 0; --i)
            result += one(m_letters);
        return result;
    }

    QString pattern(const QStringList &marks)
    {
        QString result;
        for (int i = m_random.bounded(1, 7); i > 0; --i)
            result += m_random.bounded(2) ? one(marks) : one(m_letters);
        return result;
    }

    bool coin() { return m_random.bounded(2) == 1; }

private:
    QString one(const QStringList &from) { return from.at(m_random.bounded(from.size())); }

    QRandomGenerator m_random{20231120};
    QStringList m_letters{"", "", ""};
    const QStringList m_allLetters{
        "a",          "A",      "b",      "s",      "S",      "/",      "[",      "]",
        "0",          "k",      "_",      "\\",     "\u017f", "\u00b5", "\u03bc", "\u03c2",
        "\u03c3",     "\u03a3", "\u212a", "\u0130", "\u0131", "\u00df", "\u1e9e", "\U00010400",
        "\U00010428", "a",      "A",      "b",      "s"};
};

QStringList marksOf(QRegExp::PatternSyntax syntax)
{
    if (syntax == QRegExp::WildcardUnix)
        return {"*", "?", "[ab]", "[^a]", "\\[", "\\*", "\\", "[", "]", "*", "a*", "[a-s]", "[]a]"};
    return {".",    "*",   "+",     "?",      "|",    "(a|b)", "(as)",  "(",     ")",     "[ab]",
            "[^a]", "\\[", "\\]",   "\\\\",   "\\",   "{2}",   "{0,1}", "{",     "}",     "^",
            "$",    "\\d", "\\w",   "\\b",    "\\1",  "(?:a)", "(?=a)", ".*",    "\\x61", "\\x0061",
            "]",    "\\n", "[a\\]", "[[:x:]", "\\s*", "(?!b)", "(a)?",  "a{2,}", "b{,2}", "\\S"};
}

} // namespace

class NameMatcherTest : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void substringIsFoundLikeByIndexOf();
    void longNameIsSearchedLikeByIndexOf();
    void patternMatchesLikeQRegExp_data();
    void patternMatchesLikeQRegExp();
    void requiredLiteralIsInEveryMatch_data();
    void requiredLiteralIsInEveryMatch();
    void requiredLiteralOf_data();
    void requiredLiteralOf();
    void behaviourOfQRegExpIsKept_data();
    void behaviourOfQRegExpIsKept();
    void emptyPatternMatchesAll();
};

void NameMatcherTest::substringIsFoundLikeByIndexOf()
{
    RandomTexts random;
    int found = 0;
    for (int i = 0; i < 20000; ++i) {
        random.changeLetters();
        SearchOptions options;
        options.pattern = random.name(3);
        options.caseSensitivity = random.coin() ? Qt::CaseSensitive : Qt::CaseInsensitive;
        const QString name = random.name();
        const bool expected =
            name.indexOf(options.pattern, 0, Qt::CaseSensitivity(options.caseSensitivity)) != -1;
        found += expected ? 1 : 0;
        if (NameMatcher(options).matches(name) != expected)
            QFAIL(qPrintable("pattern " + options.pattern + " name " + name));
    }
    QVERIFY(found > 1000);
}

void NameMatcherTest::longNameIsSearchedLikeByIndexOf()
{
    // Beyond 500 characters and with patterns of more than 5 Qt searches in another way.
    RandomTexts random;
    int found = 0;
    for (int i = 0; i < 1000; ++i) {
        random.changeLetters();
        SearchOptions options;
        const QString name = random.name(2000);
        options.pattern =
            random.coin() && name.size() > 20 ? name.mid(name.size() - 13, 7) : random.name(8);
        options.caseSensitivity = random.coin() ? Qt::CaseSensitive : Qt::CaseInsensitive;
        if (random.coin())
            options.pattern = options.pattern.toUpper();
        const bool expected =
            name.indexOf(options.pattern, 0, Qt::CaseSensitivity(options.caseSensitivity)) != -1;
        found += expected ? 1 : 0;
        if (NameMatcher(options).matches(name) != expected)
            QFAIL(qPrintable("pattern " + options.pattern + " name " + name));
    }
    QVERIFY(found > 100 && found < 1000);
}

void NameMatcherTest::patternMatchesLikeQRegExp_data()
{
    QTest::addColumn<int>("syntax");
    QTest::newRow("wildcard") << int(QRegExp::WildcardUnix);
    QTest::newRow("regular expression") << int(QRegExp::RegExp);
}

void NameMatcherTest::patternMatchesLikeQRegExp()
{
    QFETCH(int, syntax);
    const QStringList marks = marksOf(QRegExp::PatternSyntax(syntax));
    RandomTexts random;
    int matched = 0;
    for (int i = 0; i < 6000; ++i) {
        random.changeLetters();
        SearchOptions options;
        options.usePattern = true;
        options.patternSyntax = syntax;
        options.pattern = random.pattern(marks);
        options.caseSensitivity = random.coin() ? Qt::CaseSensitive : Qt::CaseInsensitive;
        NameMatcher matcher(options);
        const QRegExp expression(options.pattern, Qt::CaseSensitivity(options.caseSensitivity),
                                 QRegExp::PatternSyntax(syntax));
        for (int j = 0; j < 25; ++j) {
            const QString name = random.name(4);
            const bool expected = expression.isValid() && expression.exactMatch(name);
            matched += expected ? 1 : 0;
            if (matcher.matches(name) != expected)
                QFAIL(qPrintable("pattern " + options.pattern + " name " + name));
        }
    }
    QVERIFY(matched > 2000);
}

void NameMatcherTest::requiredLiteralIsInEveryMatch_data()
{
    patternMatchesLikeQRegExp_data();
}

void NameMatcherTest::requiredLiteralIsInEveryMatch()
{
    QFETCH(int, syntax);
    const QStringList marks = marksOf(QRegExp::PatternSyntax(syntax));
    RandomTexts random;
    int checked = 0;
    for (int i = 0; i < 6000; ++i) {
        random.changeLetters();
        const QString pattern = random.pattern(marks);
        const auto sensitivity = random.coin() ? Qt::CaseSensitive : Qt::CaseInsensitive;
        const QString literal =
            requiredLiteral(pattern, QRegExp::PatternSyntax(syntax), sensitivity);
        const QRegExp expression(pattern, sensitivity, QRegExp::PatternSyntax(syntax));
        if (literal.isEmpty() || !expression.isValid())
            continue;
        for (int j = 0; j < 25; ++j) {
            const QString name = random.name(4);
            if (!expression.exactMatch(name))
                continue;
            ++checked;
            // Folding beyond ASCII is left to the expression.
            bool ascii = true;
            for (QChar c : name)
                ascii = ascii && c.unicode() < 0x80;
            if (!name.contains(literal, sensitivity) && (ascii || sensitivity == Qt::CaseSensitive))
                QFAIL(qPrintable("pattern " + pattern + " literal " + literal + " name " + name));
        }
    }
    QVERIFY(checked > 500);
}

void NameMatcherTest::requiredLiteralOf_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<int>("syntax");
    QTest::addColumn<QString>("literal");
    const int wildcard = QRegExp::WildcardUnix;
    const int expression = QRegExp::RegExp;
    QTest::newRow("wildcard, text between stars") << "*data*" << wildcard << "data";
    QTest::newRow("wildcard, the longest") << "*ab*cde?f" << wildcard << "cde";
    QTest::newRow("wildcard, escaped bracket") << "*d\\[0\\]" << wildcard << "d[0]";
    QTest::newRow("wildcard, set") << "*ab[01]c" << wildcard << "ab";
    QTest::newRow("wildcard, unclosed set") << "ab[01" << wildcard << "";
    QTest::newRow("expression, text") << ".*data.*" << expression << "data";
    QTest::newRow("expression, choice") << ".*data|x" << expression << "";
    QTest::newRow("expression, choice in a group") << "ab(c|d)e" << expression << "ab";
    QTest::newRow("expression, optional letter") << "abc?de" << expression << "ab";
    QTest::newRow("expression, repeated letter") << "abc+d" << expression << "abc";
    QTest::newRow("expression, counted letter") << "abc{0,2}d" << expression << "ab";
    QTest::newRow("expression, escaped bracket") << ".*d\\[0\\]" << expression << "d[0]";
    QTest::newRow("expression, class") << "ab\\dcde" << expression << "cde";
    QTest::newRow("expression, back reference") << "(ab)\\1cde" << expression << "";
    QTest::newRow("expression, none") << ".*" << expression << "";
}

void NameMatcherTest::requiredLiteralOf()
{
    QFETCH(QString, pattern);
    QFETCH(int, syntax);
    QFETCH(QString, literal);
    QCOMPARE(requiredLiteral(pattern, QRegExp::PatternSyntax(syntax), Qt::CaseSensitive), literal);
}

void NameMatcherTest::behaviourOfQRegExpIsKept_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<int>("syntax");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("matches");
    const int wildcard = QRegExp::WildcardUnix;
    const int expression = QRegExp::RegExp;
    QTest::newRow("brackets are a set") << "*data[0]" << wildcard << "top/data[0]" << false;
    QTest::newRow("set matches its letter") << "*data[0]" << wildcard << "top/data0" << true;
    QTest::newRow("escaped brackets") << "*data\\[0\\]" << wildcard << "top/data[0]" << true;
    QTest::newRow("star passes slashes") << "top*clk" << wildcard << "top/u0/u1/clk" << true;
    QTest::newRow("unbalanced bracket") << "*data[" << wildcard << "top/data[" << false;
    QTest::newRow("whole name") << "data*" << wildcard << "top/data0" << false;
    QTest::newRow("case ignored") << "*CLK" << wildcard << "top/clk" << true;
    QTest::newRow("no lazy star") << ".*?clk" << expression << "top/clk" << false;
    QTest::newRow("unbalanced group") << "(clk" << expression << "(clk" << false;
    QTest::newRow("unbalanced set") << "clk[" << expression << "clk[" << false;
    QTest::newRow("whole name of an expression") << "clk" << expression << "top/clk" << false;
    QTest::newRow("choice") << ".*clk|.*rst" << expression << "top/rst" << true;
}

void NameMatcherTest::behaviourOfQRegExpIsKept()
{
    QFETCH(QString, pattern);
    QFETCH(int, syntax);
    QFETCH(QString, name);
    SearchOptions options;
    options.pattern = pattern;
    options.usePattern = true;
    options.patternSyntax = syntax;
    QTEST(NameMatcher(options).matches(name), "matches");
}

void NameMatcherTest::emptyPatternMatchesAll()
{
    SearchOptions options;
    for (const bool usePattern : {false, true}) {
        options.usePattern = usePattern;
        NameMatcher matcher(options);
        QVERIFY(matcher.matchesAll());
        QVERIFY(matcher.matches(QStringLiteral("top/clk")));
        QVERIFY(matcher.matches(QString()));
    }
}

TARN_TEST_MAIN(NameMatcherTest)

#include "tst_namematcher.moc"
