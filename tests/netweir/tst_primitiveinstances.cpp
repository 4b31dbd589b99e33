// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/modules/primitiveinstances.h>

#include "designfixture.h"
#include "netlisttext.h"

#include <support/testcase.h>

#include <QApplication>
#include <QRegularExpression>
#include <QTest>

using namespace NETWEIR::Internal;

namespace {

const char Primitive[] = "primitive p(q, d); output q; input d; table 0 : 1; 1 : 0; endtable "
                         "endprimitive\n";

} // namespace

class TestPrimitiveInstances : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void instancesGetNames_data();
    void instancesGetNames();
    void cellsAreRead();
    void faultsKeepTheirLines();
};

void TestPrimitiveInstances::instancesGetNames_data()
{
    QTest::addColumn<QByteArray>("items");
    QTest::addColumn<QByteArray>("rewritten"); // With "NAME" for each that was inserted.
    const auto row = [](const char *name, const char *items, const char *rewritten) {
        QTest::newRow(name) << QByteArray(items) << QByteArray(rewritten);
    };
    row("named", "p u(a, b);", "p u(a, b);");
    row("without a name", "p (a, b);", "p NAME (a, b);");
    row("several", "p(a, b), u(c, d), (e, f);", "p NAME (a, b), u(c, d), NAME (e, f);");
    row("delay", "p #1 u(a, b);", "p u(a, b);");
    row("delays", "p #(1:2:3, 0.2) (a, b);", "p NAME (a, b);");
    row("strengths", "p (strong0, weak1) #0.1 (a, b);", "p NAME (a, b);");
    row("over lines", "p\n#(1,\n2)\n(a,\nb);", "p\n\n\nNAME (a,\nb);");
    row("modules", "m #(1, 2) u(a); m (a);", "m #(1, 2) u(a); m (a);");
    row("undefined names", "x (a, b); x #(1) u(a, b);", "x (a, b); x #(1) u(a, b);");
    row("gates", "and #(1, 2) (a, b, c);", "and #(1, 2) (a, b, c);");
    row("modules within modules", "p (a, b); module n; p (c, d); endmodule p (e, f);",
        "p NAME (a, b); module n; p NAME (c, d); endmodule p NAME (e, f);");
}

void TestPrimitiveInstances::instancesGetNames()
{
    QFETCH(QByteArray, items);
    QFETCH(QByteArray, rewritten);
    const auto wrapped = [](const QByteArray &body) {
        return Primitive + QByteArray("module m; endmodule\nmodule top; ") + body + " endmodule\n";
    };
    ModuleScan scan;
    scanModules("module other; endmodule", 0, true, &scan);
    scanModules(wrapped(items), 1, true, &scan);
    const PrimitiveInstances instances(scan);
    QString text = QString::fromUtf8(instances.named(1, wrapped(items)));
    const QRegularExpression name(QStringLiteral(" netweir_primitive_\\d+ "));
    QStringList names;
    for (auto match = name.globalMatch(text); match.hasNext();)
        names.append(match.next().captured());
    QCOMPARE(names.removeDuplicates(), 0);
    text.replace(name, QStringLiteral(" NAME "));
    text.replace(QRegularExpression(QStringLiteral("[ ]+")), QStringLiteral(" "));
    text.replace(QRegularExpression(QStringLiteral(" ?\n ?")), QStringLiteral("\n"));
    QCOMPARE(text, QString::fromUtf8(wrapped(rewritten)));
    QCOMPARE(instances.named(0, "module other; endmodule"), QByteArray("module other; endmodule"));
}

/// The design uses one cell of a library.
void TestPrimitiveInstances::cellsAreRead()
{
    TarnTest::DesignFixture design;
    design.add(QStringLiteral("top.v"),
               "module top(input a, output y, output z); wire free; cell_a u(.a(a), .y(y));\n"
               "p #(1,2) (z, y); endmodule\n");
    TarnTest::writeFile(
        design.path(QStringLiteral("cells.v")),
        QByteArray("module cell_a(a, y); input a; output y; wire n; p #0.1 (n, a);\n"
                   "p (strong0, strong1) (y, n); endmodule\n") +
            Primitive);
    design.set(TE::DesignInfo::LibraryFiles, QStringList(design.path(QStringLiteral("cells.v"))));
    QVERIFY2(design.extract(), qPrintable(design.firstError()));
    QCOMPARE(TarnTest::netlistText(design.netlist->top()), QStringLiteral(R"(top : top
    a O
    y O
    z O
    free .
    u : cell_a
        a O
        y O
        n O
)"));
}

void TestPrimitiveInstances::faultsKeepTheirLines()
{
    TarnTest::DesignFixture design;
    design.add(QStringLiteral("top.v"), Primitive + QByteArray("module top(input a, output y);\n"
                                                               "p #(1,\n2) (y, a);\nwire = a;\n"
                                                               "endmodule\n"));
    design.findModules();
    QVERIFY2(design.firstError().startsWith(QStringLiteral("ERROR: top.v:5:6: syntax error")),
             qPrintable(design.firstError()));
}

TARN_TEST_MAIN(TestPrimitiveInstances)
#include "tst_primitiveinstances.moc"
