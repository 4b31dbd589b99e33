// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/verilator/piecenames.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;

class TestPieceNames : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void tellTextLanguageAndBlocks_data();
    void tellTextLanguageAndBlocks();
    void otherFilesAreNoPieces_data();
    void otherFilesAreNoPieces();
};

void TestPieceNames::tellTextLanguageAndBlocks_data()
{
    QTest::addColumn<bool>("systemVerilog");
    QTest::addColumn<bool>("library");
    QTest::addColumn<QVector<int>>("blocks");
    QTest::addColumn<QString>("name");
    QTest::newRow("Verilog") << false << false << QVector<int>() << "text7.v";
    QTest::newRow("SystemVerilog") << true << false << QVector<int>() << "text7.sv";
    QTest::newRow("library") << false << true << QVector<int>() << "text000007.v";
    QTest::newRow("blocks") << false << false << QVector<int>({2, 5}) << "text7_2.sv";
    QTest::newRow("blocks of a library") << true << true << QVector<int>({0}) << "text000007_0.sv";
}

void TestPieceNames::tellTextLanguageAndBlocks()
{
    QFETCH(bool, systemVerilog);
    QFETCH(bool, library);
    QFETCH(QVector<int>, blocks);
    QFETCH(QString, name);
    SourceFile file;
    file.systemVerilog = systemVerilog;
    file.library = library;
    TextPiece piece;
    piece.text = 7;
    piece.blocks = blocks;
    QCOMPARE(pieceName(file, piece), name);

    ToolMessage message;
    message.file = name.toLatin1();
    message.line = 3;
    QCOMPARE(textLineOf(message).text, 7);
    QCOMPARE(textLineOf(message).line, 3);
}

void TestPieceNames::otherFilesAreNoPieces_data()
{
    QTest::addColumn<QByteArray>("file");
    for (const char *file : {"", "stubs.sv", "wrapper.v", "text.v", "textual.v", "a/text1.v"})
        QTest::newRow(file) << QByteArray(file);
}

void TestPieceNames::otherFilesAreNoPieces()
{
    QFETCH(QByteArray, file);
    ToolMessage message;
    message.file = file;
    message.line = 3;
    QCOMPARE(textLineOf(message).text, -1);
}

TARN_TEST_MAIN(TestPieceNames)
#include "tst_piecenames.moc"
