// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "scanneddesign.h"

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using TarnTest::ScannedDesign;

class TestDesignScan : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void choosesAModuleOfTextsThatAreNotUnderstood_data();
    void choosesAModuleOfTextsThatAreNotUnderstood();
    void namesWhatIsMissing();
};

void TestDesignScan::choosesAModuleOfTextsThatAreNotUnderstood_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *text, const char *expected) {
        QTest::newRow(name) << QByteArray(text) << QString::fromLatin1(expected);
    };
    row("none", "", "");
    row("text that is understood", "module a; endmodule module b; endmodule", "");
    row("text that is not understood",
        "interface i; endinterface module a; endmodule module b; endmodule endmodule", "a");
    row("no module in such a text", "endmodule", "top");
}

void TestDesignScan::choosesAModuleOfTextsThatAreNotUnderstood()
{
    QFETCH(QByteArray, text);
    QTEST(ScannedDesign(text).scan.anyModule(), "expected");
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
