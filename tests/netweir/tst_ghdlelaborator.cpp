// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "temporaryfolder.h"
#include "toolscript.h"
#include "vhdlelaboration.h"

#include <support/testcase.h>

#include <QApplication>
#include <QtTest>

using namespace NETWEIR::Internal;
using namespace TarnTest;

namespace {

const QByteArray Ieee = "library ieee; use ieee.std_logic_1164.all;\n";

const QByteArray Leaf = Ieee + "entity leaf is port (d : in std_logic; q : out std_logic); end;\n"
                               "architecture rtl of leaf is begin q <= d; end;\n";

const QByteArray TopOfLeaf = Ieee +
                             "entity top is port (d : in std_logic; q : out std_logic); end;\n"
                             "architecture rtl of top is begin\n"
                             "  u : entity work.leaf port map (d => d, q => q);\n"
                             "end;\n";

QVector<VhdlTestFile> oneFile(const QByteArray &text)
{
    return {{QStringLiteral("a.vhd"), text}};
}

} // namespace

class TestGhdlElaborator final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_temporary.verifyNothingIsLeft(); }

    void elaboratesFilesInAnyOrder();
    void replacesUnknownComponents();
    void reportsErrorsOfAllFiles_data();
    void reportsErrorsOfAllFiles();

private:
    const TemporaryFolder m_temporary;
};

void TestGhdlElaborator::elaboratesFilesInAnyOrder()
{
    VhdlElaboration design(
        {{QStringLiteral("top.vhd"), TopOfLeaf}, {QStringLiteral("-leaf ä, b.vhd"), Leaf}});
    QVERIFY2(design.elaborateTop(), qPrintable(design.messages().join(QLatin1Char('\n'))));
    QCOMPARE(design.messages(), QStringList());
}

void TestGhdlElaborator::replacesUnknownComponents()
{
    const QByteArray vendor = Ieee +
                              "package cells is\n"
                              "  component pad is generic (drive : integer := 4);\n"
                              "    port (i : in std_logic; o : out std_logic); end component;\n"
                              "end;\n";
    const QByteArray top =
        Ieee +
        "use work.cells.all;\n"
        "entity top is port (d : in std_logic_vector(3 downto 0); q : out std_logic); end;\n"
        "architecture rtl of top is\n"
        "  constant w : integer := 4;\n"
        "  component Filter is\n"
        "    generic (taps : natural := 2; name : string; mask : std_logic_vector := \"01ZU\";\n"
        "             fast : boolean; gain : real; edge : bit; u : std_logic);\n"
        "    port (d : in std_logic_vector(w - 1 downto 0);\n"
        "          q : out std_logic_vector(taps - 1 downto 0); b : inout std_logic);\n"
        "  end component;\n"
        "  signal p, free : std_logic; signal f : std_logic_vector(2 downto 0);\n"
        "begin\n"
        "  u1 : pad port map (i => d(0), o => p);\n"
        "  u2 : Filter generic map (3, \"a\"\"|b\", fast => true, gain => 0.5, edge => '1', u => "
        "'H')\n"
        "    port map (d => d, q => f, b => free);\n"
        "  u3 : component Filter generic map (1, \"\", \"1\", false, 1.0, '0', 'X')\n"
        "    port map (d => d, q => f(0 downto 0), b => open);\n"
        "end;\n";
    for (const char *standard : {"93", "08"}) {
        VhdlElaboration design(
            {{QStringLiteral("top.vhd"), top}, {QStringLiteral("v.vhd"), vendor}},
            QLatin1String(standard));
        design.addModule(QStringLiteral("filter"));
        QVERIFY2(design.elaborateTop(), qPrintable(design.messages().join(QLatin1Char('\n'))));
        QCOMPARE(design.netlist(),
                 QStringLiteral("top : top\n"
                                "    q .\n"
                                "    p O\n"
                                "    free O\n"
                                "    d[3:0] OOOO\n"
                                "    f[2:0] OOO\n"
                                "BORDER u2: Filter(edge=1, fast=true, gain=5.0e-1, mask=01zx, "
                                "name=a\"|b, taps=3, u=1, d:4, q:3, b:1)\n"
                                "BORDER u3: Filter(edge=0, fast=false, gain=1.0, mask=1, name=, "
                                "taps=1, u=x, d:4, q:1, b:1)\n"));
    }
}

void TestGhdlElaborator::reportsErrorsOfAllFiles_data()
{
    QTest::addColumn<QVector<VhdlTestFile>>("files");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("syntax error") << oneFile("entity top is port (a : in bit) end;\n"
                                             "architecture rtl of top is begin end;\n")
                                  << QStringList{QStringLiteral(
                                         "ERROR: a.vhd:1:32: missing \";\" at end of port clause")};
}

void TestGhdlElaborator::reportsErrorsOfAllFiles()
{
    QFETCH(QVector<VhdlTestFile>, files);
    QFETCH(QStringList, expected);
    VhdlElaboration design(files);
    QVERIFY(!design.elaborateTop());
    QCOMPARE(design.messages(), expected);
}

TARN_TEST_MAIN(TestGhdlElaborator)

#include "tst_ghdlelaborator.moc"
