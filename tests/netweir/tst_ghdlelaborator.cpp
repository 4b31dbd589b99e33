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
