// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designfixture.h"

#include <support/testcase.h>

#include <QApplication>
#include <QtTest>

using namespace NETWEIR;
using TarnTest::DesignFixture;

class TestExtraction : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void readsADesign();
};

void TestExtraction::readsADesign()
{
    DesignFixture design;
    design.add(QStringLiteral("top.v"),
               "`include \"defs.vh\"\nmodule top(input clk, output [`W-1:0] q);\n"
               "sub u0(.c(clk), .q(q));\nendmodule\n");
    design.add(QStringLiteral("sub.sv"), "module sub(input logic c, output logic [`W-1:0] q);\n"
                                         "always_ff @(posedge c) q <= q + 1'b1;\nendmodule\n");
    TarnTest::writeFile(design.path(QStringLiteral("defs.vh")), "`define W 4\n");
    design.findModules();
    QCOMPARE(design.messages, QStringList());
    QCOMPARE(design.tops, QStringList(QStringLiteral("top")));
    QCOMPARE(design.modules, QStringList({QStringLiteral("top"), QStringLiteral("sub")}));
    QVERIFY(design.buildNetlist());
    QCOMPARE(design.netMessages, QStringList());
    QVERIFY(design.netlist->findNet(QStringLiteral("top/u0/q[3]")));
    QCOMPARE(debugLines().size(), 1);
    const QRegularExpression line(
        QStringLiteral("^netlist read: top top, 10 nets, 2 buses, 2 nodes, [0-9]+\\.[0-9]{2} s$"));
    QVERIFY2(line.match(debugLines().constFirst()).hasMatch(),
             qPrintable(debugLines().constFirst()));
}

TARN_TEST_MAIN(TestExtraction)
#include "tst_extraction.moc"
