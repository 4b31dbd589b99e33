// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/testcase.h>

#include <select/requiredliteral.h>

#include <QApplication>
#include <QTest>

class TestRequiredLiteral : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void longestTextThatEveryMatchContains_data();
    void longestTextThatEveryMatchContains();
};

void TestRequiredLiteral::longestTextThatEveryMatchContains_data()
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
    QTest::newRow("wildcard, bracket in first place of a set") << "[]ab*[x]" << wildcard << "";
    QTest::newRow("wildcard, backslash in a set") << "[\\]ab*[x]" << wildcard << "";
    QTest::newRow("wildcard, closing bracket alone") << "ab]" << wildcard << "ab]";
    QTest::newRow("wildcard, backslash alone") << "*a\\b\\" << wildcard << "a\\b\\";
    QTest::newRow("expression, text") << ".*data.*" << expression << "data";
    QTest::newRow("expression, choice") << ".*data|x" << expression << "";
    QTest::newRow("expression, choice in a group") << "ab(c|d)e" << expression << "ab";
    QTest::newRow("expression, optional letter") << "abc?de" << expression << "ab";
    QTest::newRow("expression, repeated letter") << "abc+d" << expression << "abc";
    QTest::newRow("expression, counted letter") << "abc{0,2}d" << expression << "ab";
    QTest::newRow("expression, escaped bracket") << ".*d\\[0\\]" << expression << "d[0]";
    QTest::newRow("expression, class") << "ab\\dcde" << expression << "cde";
    QTest::newRow("expression, back reference") << "(ab)\\1cde" << expression << "";
    QTest::newRow("expression, character by code") << "abc\\x0061de" << expression << "";
    QTest::newRow("expression, underscore behind a backslash") << "a\\_b" << expression << "a_b";
    QTest::newRow("expression, backslash at the end") << "abc\\" << expression << "";
    QTest::newRow("expression, set") << "ab[cd]ef[^gh]ijk" << expression << "ijk";
    QTest::newRow("expression, bracket in first place of a set") << "[]ab[x]" << expression << "";
    QTest::newRow("expression, the same of a negated set") << "[^]ab[x]" << expression << "";
    QTest::newRow("expression, bracket in a set") << "[a\\]bc[x]" << expression << "";
    QTest::newRow("expression, brackets alone") << "a]b}c" << expression << "a]b}c";
    QTest::newRow("expression, groups in a group")
        << "ab(c(d|e)(f))gh(i)jkl" << expression << "jkl";
    QTest::newRow("expression, parenthesis of a group") << "ab(\\)|c)def" << expression << "def";
    QTest::newRow("expression, count behind a class") << "ab\\d{2}" << expression << "ab";
    QTest::newRow("expression, unclosed count") << "abc{2" << expression << "";
    QTest::newRow("expression, none") << ".*" << expression << "";
    QTest::newRow("other syntax") << "abc" << int(QRegExp::FixedString) << "";
}

void TestRequiredLiteral::longestTextThatEveryMatchContains()
{
    QFETCH(QString, pattern);
    QFETCH(int, syntax);
    QFETCH(QString, literal);
    QCOMPARE(TARN::requiredLiteral(pattern, QRegExp::PatternSyntax(syntax)), literal);
}

TARN_TEST_MAIN(TestRequiredLiteral)

#include "tst_requiredliteral.moc"
