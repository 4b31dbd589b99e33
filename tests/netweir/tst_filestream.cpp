// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/signals/filestream.h>

#include <support/files.h>
#include <support/testcase.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

using namespace NETWEIR::Internal;

namespace {

constexpr int Megabyte = 1024 * 1024;

} // namespace

class TestFileStream : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void readsLines_data();
    void readsLines();
    void readsBytes();
    void readsLinesAcrossTheBuffer();
    void readsLongLinesInPieces();
    void endsWithTheGuard();

private:
    FileStream *streamOf(const QByteArray &content)
    {
        TarnTest::writeFile(m_folder.filePath("file"), content);
        QString error;
        m_stream.open(m_folder.filePath("file"), &error);
        return &m_stream;
    }

    QTemporaryDir m_folder;
    FileStream m_stream;
};

void TestFileStream::readsLines_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArrayList>("lines");
    QTest::newRow("nothing") << QByteArray() << QByteArrayList();
    QTest::newRow("one") << QByteArray("a b\n") << QByteArrayList{"a b"};
    QTest::newRow("without end") << QByteArray("a\nbc") << QByteArrayList{"a", "bc"};
    QTest::newRow("empty") << QByteArray("\n\na\n") << QByteArrayList{"", "", "a"};
    QTest::newRow("NUL") << QByteArray("a\0b\nc", 5) << QByteArrayList{QByteArray("a\0b", 3), "c"};
}

void TestFileStream::readsLines()
{
    QFETCH(QByteArray, content);
    QFETCH(QByteArrayList, lines);
    FileStream *stream = streamOf(content);
    QByteArrayList read;
    std::string_view line;
    while (stream->line(&line))
        read += QByteArray(line.data(), int(line.size()));
    QCOMPARE(read, lines);
    QCOMPARE(stream->position(), qint64(content.size()));
}

void TestFileStream::readsBytes()
{
    FileStream *stream = streamOf(QByteArray("a\0\xFF", 3));
    QCOMPARE(stream->byte(), int('a'));
    QCOMPARE(stream->byte(), 0);
    QCOMPARE(stream->position(), 2);
    QCOMPARE(stream->byte(), 255);
    QCOMPARE(stream->byte(), -1);
    QCOMPARE(stream->byte(), -1);
}

void TestFileStream::readsLinesAcrossTheBuffer()
{
    QByteArray content;
    for (int i = 0; i < 300000; ++i)
        content += QByteArray::number(i) + '\n';
    FileStream *stream = streamOf(content);
    std::string_view line;
    int count = 0;
    for (; stream->line(&line); ++count)
        QCOMPARE(QByteArray(line.data(), int(line.size())), QByteArray::number(count));
    QCOMPARE(count, 300000);
}

void TestFileStream::readsLongLinesInPieces()
{
    FileStream *stream = streamOf(QByteArray(2 * Megabyte + 5, 'x') + "\nend");
    std::string_view line;
    qint64 read = 0;
    while (stream->line(&line) && line != "end") {
        QVERIFY(line.size() <= std::size_t(Megabyte));
        read += qint64(line.size());
    }
    QCOMPARE(read, qint64(2 * Megabyte + 5));
    QVERIFY(line == "end");
}

void TestFileStream::endsWithTheGuard()
{
    FileStream *stream = streamOf(QByteArray(Megabyte, '\n'));
    const std::atomic<bool> cancelled{true};
    const ReadGuard guard(&cancelled, 100, 1LL << 40);
    std::string_view line;
    QVERIFY_EXCEPTION_THROWN(stream->line(&line), ReadingEnded);
}

TARN_TEST_MAIN(TestFileStream)
#include "tst_filestream.moc"
