// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designxml.h"

#include <netweir/internal/xml/reference.h>

#include <support/testcase.h>

#include <QTest>

using namespace NETWEIR::Internal;

class TestReference : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void targetsAreFound_data();
    void targetsAreFound();
};

namespace {

/// "path.name/sel/sel", selections from the innermost on; '*' when all of them are constant.
QString referenceText(const Reference &reference)
{
    const auto text = [](std::string_view view) {
        return QString::fromStdString(std::string(view));
    };
    QString found = text(reference.name());
    if (reference.isHierarchical())
        found.prepend(text(reference.path()) + '.');
    for (const pugi::xml_node &step : reference.steps)
        found += QLatin1Char('/') + QLatin1String(step.name());
    return found + QLatin1String(reference.isConstant() ? "*" : "");
}

} // namespace

void TestReference::targetsAreFound_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *target, const char *expected) {
        QTest::newRow(target) << QString::fromLatin1(target) << QString::fromLatin1(expected);
    };
    row("v", "v*");
    row("(varxref name=v dotted=u.g)", "u.g.v*");
    row("(sel v 0 1)", "v/sel*");
    row("(sel v i 1)", "v/sel");
    row("(arraysel v 0)", "v/arraysel*");
    row("(arraysel v i)", "v/arraysel");
    row("(structsel v name=a)", "v/structsel*");
    row("(slicesel v 0 2)", "v/slicesel*");
    row("(sel (arraysel (structsel v name=a) 1) 0 2)", "v/structsel/arraysel/sel*");
    row("(sel (arraysel v i) 0 2)", "v/arraysel/sel");
    row("(concat v w)", "v* w*");
    row("(concat (sel v 0 1) (concat (arraysel w i) x))", "v/sel* w/arraysel x*");
    row("(replicate v 3)", "v*");
    row("(sel (concat v w) 0 1)", "v* w*");
    row("3", "");
    row("(concat)", "");
}

void TestReference::targetsAreFound()
{
    QFETCH(QString, target);
    pugi::xml_document document;
    TarnTest::appendElements(document, target);
    QStringList found;
    forEachReference({document.first_child(), 7}, [&found](const Reference &reference) {
        QCOMPARE(reference.scope, 7);
        found += referenceText(reference);
    });
    QTEST(found.join(QLatin1Char(' ')), "expected");
}

QTEST_APPLESS_MAIN(TestReference)
#include "tst_reference.moc"
