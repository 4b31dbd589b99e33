// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/testcase.h>

#include <select/namematcher.h>
#include <select/netsearch.h>
#include <select/requiredliteral.h>

#include <QApplication>
#include <QRandomGenerator>
#include <QTest>
#include <QVector>

#include <algorithm>

using namespace TARN;

namespace {

/// A piece of a pattern with a text that it may stand for.
struct Mark
{
    const char *pattern;
    const char *text;
};

const QVector<Mark> wildcardMarks{{"*", ""},      {"*", "ab"},       {"?", "a"},
                                  {"[ab]", "b"},  {"[^a]", "b"},     {"\\[", "["},
                                  {"\\]", "]"},   {"\\*", "*"},      {"\\?", "?"},
                                  {"\\", "\\"},   {"[", "["},        {"]", "]"},
                                  {"[]as]", "]"}, {"[^]as[x]", "b"}, {"[]as*[x]", "s"},
                                  {"[\\]", "\\"}, {"[a-s]", "b"},    {"**[a][\\]as*[x]", "as"}};

const QVector<Mark> expressionMarks{{".", "a"},
                                    {"*", ""},
                                    {"+", ""},
                                    {"?", ""},
                                    {"|", ""},
                                    {"(a|b)", "b"},
                                    {"(as)", "as"},
                                    {"(", ""},
                                    {")", ""},
                                    {"[ab]", "a"},
                                    {"[^a]", "b"},
                                    {"\\[", "["},
                                    {"\\]", "]"},
                                    {"\\\\", "\\"},
                                    {"\\", ""},
                                    {"{2}", ""},
                                    {"{0,1}", ""},
                                    {"{", ""},
                                    {"}", ""},
                                    {"^", ""},
                                    {"$", ""},
                                    {"\\d", "0"},
                                    {"\\w", "s"},
                                    {"\\b", ""},
                                    {"(s)\\1", "ss"},
                                    {"(?:a)", "a"},
                                    {"(?=a)", ""},
                                    {"(?!b)", ""},
                                    {".*", "ab"},
                                    {"\\x61", "a"},
                                    {"\\x0061", "a"},
                                    {"]", "]"},
                                    {"\\n", "\n"},
                                    {"[a\\]", ""},
                                    {"[[:x:]", "x"},
                                    {"\\s*", ""},
                                    {"(a)?", ""},
                                    {"a{2,}", "aa"},
                                    {"b{,2}", ""},
                                    {"\\S", "a"},
                                    {"[]as[x]", "s"},
                                    {"[^]as[x]", "b"},
                                    {"[\\]as[x]", "s"},
                                    {"(\\)|as)", ")"},
                                    {"(\\(as)", "(as"},
                                    {"((a|b)s)?", ""},
                                    {"([)]as|b)", ")as"},
                                    {"(\\[as)|b]s\\)", "[as"}};

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

    /// A pattern and, in @p text, what it may match.
    QString pattern(const QVector<Mark> &marks, QString *text)
    {
        QString result;
        text->clear();
        for (int i = m_random.bounded(1, 7); i > 0; --i) {
            if (coin()) {
                const Mark &mark = marks.at(m_random.bounded(marks.size()));
                result += mark.pattern;
                *text += mark.text;
            } else {
                const QString letter = one(m_letters);
                result += letter;
                *text += letter;
            }
        }
        return result;
    }

    /// @p text as it is or a little different, sometimes something else.
    QString like(const QString &text)
    {
        QString result = text;
        switch (m_random.bounded(5)) {
        case 0:
            return name(4);
        case 1:
            return result.insert(m_random.bounded(text.size() + 1), one(m_letters));
        case 2:
            return result.remove(m_random.bounded(text.size() + 1), 1);
        case 3:
            return coin() ? result.toUpper() : result.toLower();
        default:
            return result;
        }
    }

    bool coin() { return m_random.bounded(2) == 1; }

private:
    QString one(const QStringList &from) { return from.at(m_random.bounded(from.size())); }

    QRandomGenerator m_random{20231120};
    QStringList m_letters{"", "", ""};
    const QStringList m_allLetters{
        "a",      "A",      "b",           "s",           "S",          "/",      "[",
        "]",      "0",      "k",           "_",           "\\",         "\u017f", "\u00b5",
        "\u03bc", "\u03c2", "\u03c3",      "\u03a3",      "\u212a",     "\u0130", "\u0131",
        "\u00df", "\u1e9e", "\U00010400",  "\U00010428",  "a",          "A",      "b",
        "s",      " ",      QChar(0xd801), QChar(0xdc00), QChar(0xdc28)};
};

const QVector<Mark> &marksOf(QRegExp::PatternSyntax syntax)
{
    return syntax == QRegExp::WildcardUnix ? wildcardMarks : expressionMarks;
}

bool isAscii(const QString &text)
{
    return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() < 0x80; });
}

} // namespace

class TestNameMatcher : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void substringIsFoundLikeByIndexOf();
    void longNameIsSearchedLikeByIndexOf();
    void commonBeginningsChangeNoResult_data();
    void commonBeginningsChangeNoResult();
    void patternMatchesLikeQRegExp_data();
    void patternMatchesLikeQRegExp();
    void requiredLiteralIsInEveryMatch_data();
    void requiredLiteralIsInEveryMatch();
    void behaviourOfQRegExpIsKept_data();
    void behaviourOfQRegExpIsKept();
    void emptyPatternMatchesAll();
};

void TestNameMatcher::substringIsFoundLikeByIndexOf()
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

void TestNameMatcher::longNameIsSearchedLikeByIndexOf()
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

void TestNameMatcher::commonBeginningsChangeNoResult_data()
{
    QTest::addColumn<bool>("usePattern");
    QTest::newRow("substring") << false;
    QTest::newRow("wildcard") << true;
}

void TestNameMatcher::commonBeginningsChangeNoResult()
{
    QFETCH(bool, usePattern);
    RandomTexts random;
    int found = 0;
    for (int i = 0; i < 2000; ++i) {
        random.changeLetters();
        SearchOptions options;
        options.pattern = random.name(3);
        options.usePattern = usePattern;
        options.patternSyntax = QRegExp::WildcardUnix;
        if (usePattern)
            options.pattern = "*" + options.pattern + "*";
        options.caseSensitivity = random.coin() ? Qt::CaseSensitive : Qt::CaseInsensitive;
        NameMatcher matcher(options);
        QString name;
        for (int j = 0; j < 12; ++j) {
            const QString former = name;
            // Often the beginning of the name before, and not always all that is common.
            const int same = random.coin() ? random.name(former.size()).size() : 0;
            name = former.left(same) + random.name(6);
            const bool expected = NameMatcher(options).matches(name);
            found += expected ? 1 : 0;
            if (matcher.matches(name, qMin(same, former.size())) != expected)
                QFAIL(qPrintable("pattern " + options.pattern + " name " + name));
        }
    }
    QVERIFY(found > 1000);
}

void TestNameMatcher::patternMatchesLikeQRegExp_data()
{
    QTest::addColumn<int>("syntax");
    QTest::newRow("wildcard") << int(QRegExp::WildcardUnix);
    QTest::newRow("regular expression") << int(QRegExp::RegExp);
}

void TestNameMatcher::patternMatchesLikeQRegExp()
{
    QFETCH(int, syntax);
    const QVector<Mark> &marks = marksOf(QRegExp::PatternSyntax(syntax));
    RandomTexts random;
    int matched = 0;
    for (int i = 0; i < 12000; ++i) {
        random.changeLetters();
        SearchOptions options;
        options.usePattern = true;
        options.patternSyntax = syntax;
        QString text;
        options.pattern = random.pattern(marks, &text);
        if (options.pattern.isEmpty())
            continue;
        options.caseSensitivity = random.coin() ? Qt::CaseSensitive : Qt::CaseInsensitive;
        NameMatcher matcher(options);
        const QRegExp expression(options.pattern, Qt::CaseSensitivity(options.caseSensitivity),
                                 QRegExp::PatternSyntax(syntax));
        for (int j = 0; j < 12; ++j) {
            const QString name = random.like(text);
            const bool expected = expression.exactMatch(name);
            matched += expected ? 1 : 0;
            if (matcher.matches(name) != expected)
                QFAIL(qPrintable("pattern " + options.pattern + " name " + name));
        }
    }
    QVERIFY(matched > 20000);
}

void TestNameMatcher::requiredLiteralIsInEveryMatch_data()
{
    patternMatchesLikeQRegExp_data();
}

void TestNameMatcher::requiredLiteralIsInEveryMatch()
{
    QFETCH(int, syntax);
    const QVector<Mark> &marks = marksOf(QRegExp::PatternSyntax(syntax));
    RandomTexts random;
    int checked = 0;
    for (int i = 0; i < 12000; ++i) {
        random.changeLetters();
        QString text;
        const QString pattern = random.pattern(marks, &text);
        const auto sensitivity = random.coin() ? Qt::CaseSensitive : Qt::CaseInsensitive;
        const QString literal = requiredLiteral(pattern, QRegExp::PatternSyntax(syntax));
        const QRegExp expression(pattern, sensitivity, QRegExp::PatternSyntax(syntax));
        if (literal.isEmpty())
            continue;
        for (int j = 0; j < 12; ++j) {
            const QString name = random.like(text);
            // Folding beyond ASCII is left to the expression.
            if ((sensitivity == Qt::CaseInsensitive && !isAscii(name)) ||
                !expression.exactMatch(name))
                continue;
            ++checked;
            if (!name.contains(literal, sensitivity))
                QFAIL(qPrintable("pattern " + pattern + " literal " + literal + " name " + name));
        }
    }
    QVERIFY(checked > 10000);
}

void TestNameMatcher::behaviourOfQRegExpIsKept_data()
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
    // To the substring search a pair is one letter.
    QTest::newRow("half a surrogate pair")
        << QString("?") + QChar(0xdc00) << wildcard << "\U00010400" << true;
    QTest::newRow("no lazy star") << ".*?clk" << expression << "top/clk" << false;
    QTest::newRow("unbalanced group") << "(clk" << expression << "(clk" << false;
    QTest::newRow("unbalanced set") << "clk[" << expression << "clk[" << false;
    QTest::newRow("whole name of an expression") << "clk" << expression << "top/clk" << false;
    QTest::newRow("choice") << ".*clk|.*rst" << expression << "top/rst" << true;
}

void TestNameMatcher::behaviourOfQRegExpIsKept()
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

void TestNameMatcher::emptyPatternMatchesAll()
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

TARN_TEST_MAIN(TestNameMatcher)

#include "tst_namematcher.moc"
