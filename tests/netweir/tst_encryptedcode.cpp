// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/sources/encryptedcode.h>

#include "designfixture.h"
#include "netlisttext.h"

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;

class TestEncryptedCode : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void encryptedCodeIsBlanked_data();
    void encryptedCodeIsBlanked();
    void designsAreReadWithoutEncryptedCode();
    void encryptedModulesAreUnknown();
};

void TestEncryptedCode::encryptedCodeIsBlanked_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("blanked"); // Without the blanks at the ends of lines.
    QTest::addColumn<QString>("regions");
    const auto row = [](const char *name, const char *text, const char *blanked,
                        const char *regions) {
        QTest::newRow(name) << QByteArray(text) << QByteArray(blanked)
                            << QString::fromLatin1(regions);
    };
    row("empty", "", "", "");
    row("open code", "module a;\nendmodule", "module a;\nendmodule", "");
    row("pragma", "a\n`pragma protect begin_protected\nx+/=\n`pragma protect end_protected\nb\n",
        "a\n\n\n\nb\n", "2-4");
    row("short form", "a\n `protected\nx\n`endprotected\nb", "a\n\n\n\nb", "2-4");
    row("directives around open code",
        "`pragma protect version = 2\n`pragma protect begin\na\n`pragma protect end\n", "\n\na\n\n",
        "");
    row("two", "`protected\nx\n`endprotected\na\n`protected\ny\n`endprotected\n", "\n\n\na\n\n\n\n",
        "1-3 5-7");
    row("begins twice", "`protected\n`pragma protect begin_protected\nx\n`endprotected\na",
        "\n\n\n\na", "1-4");
    row("no end", "a\n`pragma\tprotect  begin_protected , x\ny\nz", "a\n\n\n", "2-4");
    row("end alone", "`endprotected\na\n`pragma protect end_protected", "\na\n", "");
    row("carriage returns", "a\r\n`protected\r\nx\r\n`endprotected\r\nb\r\n", "a\r\n\n\n\nb\r\n",
        "2-4");
    row("other words",
        "`pragma protection\n`protectedly x\nprotected int a;\n`pragma keep protect\n",
        "`pragma protection\n`protectedly x\nprotected int a;\n`pragma keep protect\n", "");
}

void TestEncryptedCode::encryptedCodeIsBlanked()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, blanked);
    QFETCH(QString, regions);
    const int size = text.size();
    QStringList found;
    for (const EncryptedRegion &region : blankEncryptedCode(&text))
        found.append(QStringLiteral("%1-%2").arg(region.first).arg(region.last));
    QCOMPARE(found.join(QLatin1Char(' ')), regions);
    QCOMPARE(text.size(), size);
    QByteArrayList lines = text.split('\n');
    for (QByteArray &line : lines) {
        if (line.trimmed().isEmpty())
            line.clear();
    }
    QCOMPARE(lines.join('\n'), blanked);
}

/// A message says which code is missing. Errors keep their lines.
void TestEncryptedCode::designsAreReadWithoutEncryptedCode()
{
    const QByteArray encrypted = "`pragma protect begin_protected\n`pragma protect version = 2\n"
                                 "ZW5k`bW9k//+ `NOT_DEFINED\n"
                                 "`pragma protect end_protected\n";
    TarnTest::DesignFixture design;
    design.add(QStringLiteral("top.v"),
               "module top(input a);\n" + encrypted + "wire w = a;\nendmodule\n");
    QVERIFY2(design.extract(), qPrintable(design.firstError()));
    QCOMPARE(TarnTest::netlistText(design.netlist->top()),
             QStringLiteral("top : top\n    a O\n    w O\n"));
    QCOMPARE(design.messages, QStringList("WARNING: " + design.path(QStringLiteral("top.v")) +
                                          ":2: The encrypted code from this line on is left out."));

    TarnTest::DesignFixture broken;
    broken.add(QStringLiteral("top.v"),
               "module top(input a);\n" + encrypted + "wire = a;\nendmodule\n");
    broken.findModules();
    QVERIFY2(broken.firstError().startsWith(QStringLiteral("ERROR: top.v:6:6: syntax error")),
             qPrintable(broken.firstError()));
}

/// A module that is encrypted as a whole is unknown.
void TestEncryptedCode::encryptedModulesAreUnknown()
{
    TarnTest::DesignFixture design;
    design.add(QStringLiteral("ip.v"), "`timescale 1ns/1ps\n`protected\nbW9kdWxl\n`endprotected\n");
    design.add(QStringLiteral("top.v"),
               "module top(input a); wire q, free; ip #(.N(2)) u(.a(a), .q(q)); endmodule\n");
    QVERIFY2(design.extract(), qPrintable(design.firstError()));
    QCOMPARE(TarnTest::netlistText(design.netlist->top()),
             QStringLiteral("top : top\n    a O\n    q O\n    free .\n"));
}

TARN_TEST_MAIN(TestEncryptedCode)
#include "tst_encryptedcode.moc"
