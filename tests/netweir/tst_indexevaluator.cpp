// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designxml.h"
#include "indexrangetext.h"

#include <netweir/internal/nets/indexevaluator.h>

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR::Internal;
using TarnTest::DesignXml;
using TarnTest::rangeText;

class TestIndexEvaluator : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void expressionsHaveValues_data();
    void expressionsHaveValues();
    void knownVariablesHaveOneValue_data();
    void knownVariablesHaveOneValue();
    void valuesCanBeForgotten();
    void namesBelongToTheirScope();
    void deepExpressionsGoByTheirWidth_data();
    void deepExpressionsGoByTheirWidth();
};

namespace {

/// The values of the expression in a module with the variable x of three bits, x known to be 5
/// when @p isKnown.
QString valuesText(const QString &expression, bool isKnown)
{
    const DesignXml design = DesignXml::ofModule(
        QStringLiteral("(var:u3 name=x) (func:u8 name=f) (index %1)").arg(expression));
    IndexEvaluator indexes(design->top(), design->types());
    if (isKnown)
        indexes.setValue(0, 5);
    return rangeText(indexes.valuesOf(design.element("index").first_child(), 0));
}

} // namespace

void TestIndexEvaluator::expressionsHaveValues_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *expression, const char *expected) {
        QTest::newRow(expression) << QString::fromLatin1(expression)
                                  << QString::fromLatin1(expected);
    };
    row("7", "7");
    row("-7", "-7");
    row("(const:u4 name=4'bx)", "0..15/1");
    row("(const:u64 name=64'h10000000000)", "1099511627776");
    row("(const:u64 name=64'h10000000001)", "all");
    row("x:u3", "0..7/1");
    row("x:s3", "-4..3/1");
    row("x", "0..1/1"); // Without a type, a single bit.
    row("x:u39", "all");
    row("(extend:u8 x:u3)", "0..7/1");
    row("(extends:s8 x:s3)", "-4..3/1");
    row("(add:u8 x:u3 3)", "3..10/1");
    row("(mul:u8 x:u3 4)", "0..28/4");
    row("(sub:s8 (add:u8 x:u3 4) 1)", "3..10/1");
    row("(sub:u8 x:u3 1)", "0..255/1"); // The result may wrap.
    row("(add:u3 (mul:u3 x:u3 2) 4)", "0..6/2");
    row("(add:u3 5 6)", "11"); // Single values do not.
    row("(mul:u4 x:u3 x:u3)", "0..15/1");
    row("(or:u4 x:u3 1)", "0..15/1");
    row("(cond:u8 x:u3 4 8)", "4..8/4");
    row("(cond:u8 x:u3 (mul:u8 x:u3 2) 8)", "0..14/2");
    row("(sel:u2 (add:u8 x:u3 1) 0 2)", "0..3/1");
    row("(sel:u4 (add:u8 x:u3 1) 0 4)", "1..8/1");
    row("(sel:u2 9 0 2)", "9");
    row("(sel:u2 x:u3 0 2)", "0..3/1");
    row("(sel:u2 x:u3 1 2)", "0..3/1");
    row("(sel:u2 (add:u8 x:u3 1) 1 2)", "0..3/1");
    row("(sel:u2 (add:u8 x:u3 1) x:u3 2)", "0..3/1");
    row("(sel:u2 (add:u8 x:u3 1) 0 x:u3)", "0..3/1");
}

void TestIndexEvaluator::expressionsHaveValues()
{
    QFETCH(QString, expression);
    QTEST(valuesText(expression, false), "expected");
}

void TestIndexEvaluator::knownVariablesHaveOneValue_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *expression, const char *expected) {
        QTest::newRow(expression) << QString::fromLatin1(expression)
                                  << QString::fromLatin1(expected);
    };
    row("x:u3", "5");
    row("(add:u8 x:u3 3)", "8");
    row("(add:u8 (mul:u8 x:u3 2) y:u2)", "10..13/1");
    row("(sel:u2 x:u3 0 2)", "1");
    row("(sel:u2 (add:u3 x:u3 3) 0 2)", "8"); // Lies outside of a vector of four.
    row("y:u2", "0..3/1");
    row("f:u2", "0..3/1");
    row("(varxref:u2 name=x)", "0..3/1");
}

void TestIndexEvaluator::knownVariablesHaveOneValue()
{
    QFETCH(QString, expression);
    QTEST(valuesText(expression, true), "expected");
}

void TestIndexEvaluator::valuesCanBeForgotten()
{
    const DesignXml design = DesignXml::ofModule(QStringLiteral("(var:u3 name=x) (index x:u3)"));
    IndexEvaluator indexes(design->top(), design->types());
    const pugi::xml_node expression = design.element("index").first_child();
    indexes.setValue(0, 5);
    indexes.setValue(0, 6);
    QCOMPARE(rangeText(indexes.valuesOf(expression, 0)), QStringLiteral("6"));
    indexes.forgetValue(0);
    QCOMPARE(rangeText(indexes.valuesOf(expression, 0)), QStringLiteral("0..7/1"));
}

void TestIndexEvaluator::namesBelongToTheirScope()
{
    const DesignXml design = DesignXml::ofModule(
        QStringLiteral("(var:u3 name=x) (begin name=g (var:u3 name=x)) (index x:u3)"));
    IndexEvaluator indexes(design->top(), design->types());
    const pugi::xml_node expression = design.element("index").first_child();
    indexes.setValue(1, 5);
    QCOMPARE(rangeText(indexes.valuesOf(expression, 0)), QStringLiteral("0..7/1"));
    QCOMPARE(rangeText(indexes.valuesOf(expression, 1)), QStringLiteral("5"));
}

void TestIndexEvaluator::deepExpressionsGoByTheirWidth_data()
{
    QTest::addColumn<QString>("level");
    QTest::newRow("left of sums") << "(add:u8 %1 0)";
    QTest::newRow("right of sums") << "(add:u8 0 %1)";
    QTest::newRow("extensions") << "(extend:u8 %1)";
    QTest::newRow("first choices") << "(cond:u8 x:u1 %1 1)";
    QTest::newRow("second choices") << "(cond:u8 x:u1 1 %1)";
    QTest::newRow("part selects") << "(sel:u8 %1 0 8)";
}

void TestIndexEvaluator::deepExpressionsGoByTheirWidth()
{
    QFETCH(QString, level);
    const auto nested = [&level](int depth) {
        QString text = QStringLiteral("1");
        for (int i = 0; i < depth; ++i)
            text = level.arg(text);
        return text;
    };
    QCOMPARE(valuesText(nested(40), false), QStringLiteral("1"));
    QCOMPARE(valuesText(nested(42), false), QStringLiteral("0..255/1"));
}

QTEST_APPLESS_MAIN(TestIndexEvaluator)
#include "tst_indexevaluator.moc"
