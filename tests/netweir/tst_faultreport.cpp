// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "scanneddesign.h"

#include <netweir/internal/modules/stubs.h>
#include <netweir/internal/verilator/elaborationroots.h>
#include <netweir/internal/verilator/faultreport.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;
using TarnTest::ScannedDesign;

class TestFaultReport : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void namesPlacesAndCauses_data();
    void namesPlacesAndCauses();
};

void TestFaultReport::namesPlacesAndCauses_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *name, const char *text, const char *output,
                        const QStringList &expected) {
        QTest::newRow(name) << QByteArray(text) << QByteArray(output) << expected;
    };
    row("nothing", "module a; endmodule", "", {});
    row("place", "module a;\nendmodule", "%Error: text0.sv:2:5: Bad\n",
        {"ERROR: /src/a.sv:2:5: Bad"});
    row("place in a file included by its name", "`line 7 \"b.vh\" 0\nx",
        "%Warning-WIDTH: text0.sv:1:5: Bad\n", {"WARNING: b.vh:7:5: Bad"});
    row("no place", "", "%Error: stubs.sv:2:5: Bad\n", {"ERROR: Bad"});
    row("root", "", "%Error: wrapper.v:3:5: Bad\n", {"ERROR: /src/b.vhd:7:3: Bad"});
    row("interface on a pin of an unknown module", "module a;\nb u(.p(i));\nendmodule",
        "%Error: text0.sv:2:7: Illegal input port connection 'p'\n",
        {"ERROR: /src/a.sv:2:7: An interface or an array is connected to a module that no file "
         "defines. Add the file that defines the module.",
         "ERROR: /src/a.sv:2:7: Illegal input port connection 'p'"});
    row("illegal connection elsewhere", "module a;\nendmodule",
        "%Error: text0.sv:2:7: Illegal input port connection 'p'\n",
        {"ERROR: /src/a.sv:2:7: Illegal input port connection 'p'"});
    row("word of a scope that no file declares", "module a;\nnone::t x;\nendmodule",
        "%Error: text0.sv:2:5: syntax error\n",
        {"ERROR: /src/a.sv:2:1: No file declares the package \"none\". Add the file that declares "
         "it.",
         "1 more error(s) that follow from those above"});
    row("the same scope without an error", "module a;\nnone::t x;\nendmodule",
        "%Warning-WIDTH: text0.sv:2:5: Bad\n", {"WARNING: /src/a.sv:2:5: Bad"});
}

void TestFaultReport::namesPlacesAndCauses()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, output);
    QFETCH(QStringList, expected);
    const ScannedDesign design({{QStringLiteral("a.sv"), text}});
    const Stubs stubs(design.scan.modules().unknownInstantiations(), design.scan.moduleScan());
    PartRoot root;
    root.place = {QStringLiteral("/src/b.vhd"), 7, 3};
    const ElaborationRoots roots({PartRoot(), root}, design.scan, false);
    const FaultReport report(design.sources, design.text, design.scan, stubs, roots);
    QCOMPARE(report.userMessages(parseToolOutput(output)), expected);
}

TARN_TEST_MAIN(TestFaultReport)
#include "tst_faultreport.moc"
