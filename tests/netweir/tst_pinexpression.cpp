// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designxml.h"

#include <netweir/internal/xml/pinexpression.h>

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR::Internal;

class TestPinExpression : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void usersPartsAreFound_data();
    void usersPartsAreFound();
    void variablesAreConnectable_data();
    void variablesAreConnectable();
    void selectionsOfPartsAreFound_data();
    void selectionsOfPartsAreFound();
};

namespace {

/// The element of @p text, which lives in @p document.
pugi::xml_node elementOf(pugi::xml_document *document, const QString &text)
{
    TarnTest::appendElements(*document, text);
    return document->first_child();
}

} // namespace

void TestPinExpression::usersPartsAreFound_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *expression, const char *expected) {
        QTest::newRow(expression) << QString::fromLatin1(expression)
                                  << QString::fromLatin1(expected);
    };
    row("v", "varref");
    row("(extend v)", "varref");
    row("(extends (extend v))", "varref");
    row("(sel loc=a (varref name=v loc=a) 0 1)", "varref"); // Added to fit the width.
    row("(sel loc=b (varref name=v loc=a) 0 1)", "sel");
    row("(extend (sel loc=b (varref name=v loc=a) 0 1))", "sel");
    row("(sel loc=a (extend loc=a (varref name=v)) 0 1)", "varref");
    row("(concat v w)", "concat");
}

void TestPinExpression::usersPartsAreFound()
{
    QFETCH(QString, expression);
    pugi::xml_document document;
    QTEST(QString::fromLatin1(connectedPart(elementOf(&document, expression)).name()), "expected");
}

void TestPinExpression::variablesAreConnectable_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<bool>("expected");
    const auto row = [](const char *expression, bool expected) {
        QTest::newRow(expression) << QString::fromLatin1(expression) << expected;
    };
    row("v", true);
    row("(varxref name=v dotted=u)", true);
    row("3", false);
    row("(add v w)", false);
    row("(extend v)", true);
    row("(extends v)", false);
    row("(extend (extend v))", false);
    row("(extend (add v w))", false);
    row("(sel v 0 1)", true);
    row("(sel v i 1)", false);
    row("(arraysel v 0)", true);
    row("(arraysel v i)", false);
    row("(slicesel v 0 2)", true);
    row("(slicesel v i 2)", false);
    row("(structsel v name=a)", true);
    row("(sel (structsel (arraysel v 0) name=a) 0 1)", true);
    row("(sel (structsel (arraysel v i) name=a) 0 1)", false);
    row("(sel (add v w) 0 1)", false);
    row("(concat v w)", true);
    row("(concat v 3)", false);
    row("(concat 3 v)", false);
    row("(concat v (concat w (sel x 0 1)))", true);
    row("(concat v (concat w (add x y)))", false);
    row("(concat (extend v) w)", true);
    row("(sel (concat v w) 0 1)", true);
    row("(sel (concat v 3) 0 1)", false);
}

void TestPinExpression::variablesAreConnectable()
{
    QFETCH(QString, expression);
    pugi::xml_document document;
    QTEST(isConnectable(elementOf(&document, expression)), "expected");
}

void TestPinExpression::selectionsOfPartsAreFound_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<bool>("expected");
    const auto row = [](const char *expression, bool expected) {
        QTest::newRow(expression) << QString::fromLatin1(expression) << expected;
    };
    row("(sel (concat v w) 0 1)", true);
    row("(sel (sel (concat v w) 0 2) 0 1)", true);
    row("(concat v w)", false);
    row("(sel v 0 1)", false);
    row("v", false);
}

void TestPinExpression::selectionsOfPartsAreFound()
{
    QFETCH(QString, expression);
    pugi::xml_document document;
    QTEST(isSelectionOfParts(elementOf(&document, expression)), "expected");
}

QTEST_APPLESS_MAIN(TestPinExpression)
#include "tst_pinexpression.moc"
