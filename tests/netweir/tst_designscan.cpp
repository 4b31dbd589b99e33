// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "scanneddesign.h"

#include <support/testcase.h>

#include <QApplication>
#include <QtTest>

using TarnTest::ScannedDesign;

class TestDesignScan : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void choosesTheTop_data();
    void choosesTheTop();
    void explainsAMissingTopOnlyWithoutErrors();
    void prefersSourcesToLibraries();
    void namesWhatIsMissing();
};

void TestDesignScan::choosesTheTop_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("top");
    QTest::addColumn<QString>("tops");
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QStringList>("messages");
    const auto row = [](const char *name, const char *text, const char *top, const char *tops,
                        const char *chosen, const QStringList &messages) {
        QTest::newRow(name) << QByteArray(text) << QString::fromLatin1(top)
                            << QString::fromLatin1(tops) << QString::fromLatin1(chosen) << messages;
    };
    row("one", "module a; b u(); endmodule module b; endmodule", "", "a", "a", {});
    row("named", "module a; endmodule module b; endmodule", "b", "b", "b", {});
    row("none", "", "", "", "",
        {QStringLiteral("WARNING: The sources define no module. Add the files that define the "
                        "modules of the design.")});
    row("several", "module a; endmodule module b; endmodule", "", "a b", "",
        {QStringLiteral("WARNING: The design has several candidates for the top module: a, b.")});
    row("text that is not understood", "module a; endmodule module b; endmodule endmodule", "",
        "a b", "a",
        {QStringLiteral("WARNING: The design has several candidates for the top module: a, b.")});
    row("no module in such a text", "endmodule", "", "", "top",
        {QStringLiteral("WARNING: The sources define no module. Add the files that define the "
                        "modules of the design.")});
    row("endless", "module a;\na u(); endmodule", "", "a", "a",
        {QStringLiteral("ERROR: /src/a.v:1: The instantiation never ends (a -> a). Break the "
                        "circle or end it with a generate condition.")});
}

void TestDesignScan::choosesTheTop()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, top);
    QFETCH(QString, tops);
    QFETCH(QString, chosen);
    QFETCH(QStringList, messages);
    const ScannedDesign design(text, top);
    QCOMPARE(design.scan.tops().join(' '), tops);
    QCOMPARE(design.scan.chosenTop(), chosen);
    QStringList found;
    design.scan.addMessages(&found);
    QCOMPARE(found, messages);
}

/// An error of the preprocessor may be why modules are missing.
void TestDesignScan::explainsAMissingTopOnlyWithoutErrors()
{
    const ScannedDesign design(QByteArray("module a; endmodule module b; endmodule"));
    const QStringList error(QStringLiteral("ERROR: a.v:1:1: Cannot find the include file"));
    QStringList messages = error;
    design.scan.addMessages(&messages);
    QCOMPARE(messages, error);
}

void TestDesignScan::prefersSourcesToLibraries()
{
    const ScannedDesign design({{QStringLiteral("lib/a.v"), "module a; endmodule"},
                                {QStringLiteral("b.v"), "module b; a u(); endmodule"}});
    QCOMPARE(design.scan.tops(), QStringList(QStringLiteral("b")));
    QCOMPARE(design.scan.modules().modules(), QStringList(QStringLiteral("b")));
}

void TestDesignScan::namesWhatIsMissing()
{
    const ScannedDesign design({{QStringLiteral("a.sv"), "module a; import p::*; b u(); c v();"
                                                         " endmodule\nmodule c; endmodule"}});
    QCOMPARE(design.scan.missingNames(), QByteArrayList({"b", "p"}));
    QCOMPARE(design.scan.unknownWithout({}).size(), 1);
    QCOMPARE(design.scan.unknownWithout({"c"}).size(), 2);
    QCOMPARE(design.scan.knownNames(), QSet<QByteArray>({"a", "c"}));
}

TARN_TEST_MAIN(TestDesignScan)
#include "tst_designscan.moc"
