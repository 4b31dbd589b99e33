// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <tool/simulation/verilogname.h>

#include <support/testcase.h>

#include <QTest>

using NETWEIR::NameStep;
using namespace Tool;

/// Names in texts for simulators.
class TestVerilogName : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void identifiersAreEscapedWhereNeeded_data();
    void identifiersAreEscapedWhereNeeded();
    void pathsHaveStepsAndIndexes();
    void pathsAreRead_data();
    void pathsAreRead();
    void otherTextsAreNoPaths_data();
    void otherTextsAreNoPaths();
    void textsAreQuotedForDisplay();
};

void TestVerilogName::identifiersAreEscapedWhereNeeded_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const char *expected) {
        QTest::newRow(name) << QString::fromUtf8(name) << QByteArray(expected);
    };
    row("clk", "clk");
    row("_a$1", "_a$1");
    row("a__b", "a__b");
    row("$a", "\\$a ");
    row("1a", "\\1a ");
    row("a.b", "\\a.b ");
    row("a[3]", "\\a[3] ");
    row("a/b", "\\a/b ");
    row("a\\b", "\\a\\b ");
    row("a-b", "\\a-b ");
    row("\xc3\xa4", "\\\xc3\xa4 ");
    // Of Verilog, of SystemVerilog, the first and the last.
    row("wire", "\\wire ");
    row("logic", "\\logic ");
    row("do", "\\do ");
    row("uwire", "\\uwire ");
    row("accept_on", "\\accept_on ");
    row("xor", "\\xor ");
    row("s_until_with", "\\s_until_with ");
    row("unique0", "\\unique0 ");
    row("Wire", "Wire");
    row("wires", "wires");
    row("process", "process");
}

void TestVerilogName::identifiersAreEscapedWhereNeeded()
{
    QFETCH(QString, name);
    QTEST(verilogIdentifier(name), "expected");
}

void TestVerilogName::pathsHaveStepsAndIndexes()
{
    QCOMPARE(verilogPath({{"g", "[0]"}, {"a.b", ""}, {"do", "[1][7:0]"}}),
             QByteArray("g[0].\\a.b .\\do [1][7:0]"));
    QCOMPARE(verilogPath({}), QByteArray());
}

void TestVerilogName::pathsAreRead_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("path");
    QTest::newRow("one step") << "hub_top" << QByteArray("hub_top");
    QTest::newRow("steps") << "tb.g[-1][2].dut" << QByteArray("tb.g[-1][2].dut");
    QTest::newRow("escaped") << "tb.\\my.dut[1] .u" << QByteArray("tb.\\my.dut[1] .u");
    QTest::newRow("escaped at the end") << "tb.\\my.dut" << QByteArray("tb.\\my.dut ");
    QTest::newRow("escaped with an index") << "\\a/b [3].u" << QByteArray("\\a/b [3].u");
    QTest::newRow("escaped for no reason") << "\\tb .dut" << QByteArray("tb.dut");
    QTest::newRow("keyword") << "tb.do" << QByteArray("tb.\\do ");
}

void TestVerilogName::pathsAreRead()
{
    QFETCH(QString, text);
    QVector<NameStep> steps;
    QVERIFY(readVerilogPath(text, &steps));
    QTEST(verilogPath(steps), "path");
}

void TestVerilogName::otherTextsAreNoPaths_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text :
         {"", ".", "tb.", ".dut", "tb..dut", "tb/dut", "tb dut", "tb.dut ", "tb[a]", "tb[]", "tb[1",
          "1tb", "tb;", "\\", "\\ ", "\\a\nb", "tb.dut\n", "$root.tb", "t\xc3\xa4.dut"})
        QTest::newRow(text) << QString::fromUtf8(text);
}

void TestVerilogName::otherTextsAreNoPaths()
{
    QFETCH(QString, text);
    QVector<NameStep> steps;
    QVERIFY(!readVerilogPath(text, &steps));
}

void TestVerilogName::textsAreQuotedForDisplay()
{
    QCOMPARE(displayText("a/b[3]"), QByteArray("a/b[3]"));
    QCOMPARE(displayText("50%\\\"x\""), QByteArray("50%%\\\\\\\"x\\\""));
    QCOMPARE(displayText("a\nb"), QByteArray("a\\\\x0ab"));
}

QTEST_APPLESS_MAIN(TestVerilogName)
#include "tst_verilogname.moc"
