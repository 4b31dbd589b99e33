// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/sources/sourcecheck.h>

#include <support/files.h>
#include <support/processortime.h>
#include <support/testcase.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

using namespace NETWEIR::Internal;

class TestSourceCheck : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void checksInLinearTime_data();
    void checksInLinearTime();
    void followsIncludes_data();
    void followsIncludes();
    void namesWhatTheElaboratorCannotRead_data();
    void namesWhatTheElaboratorCannotRead();
    void tellsWordsOfTheSources();

private:
    QStringList check(const QByteArray &text, SourceWords *words = nullptr, bool vhdl = false);

    QTemporaryDir m_folder;
};

QStringList TestSourceCheck::check(const QByteArray &text, SourceWords *words, bool vhdl)
{
    DesignSources sources;
    SourceFile file;
    file.vhdl = vhdl;
    file.path = m_folder.filePath(QStringLiteral("a.v"));
    TarnTest::writeFile(file.path, text);
    sources.files.append(file);
    return checkSources(sources, words);
}

void TestSourceCheck::checksInLinearTime_data()
{
    QTest::addColumn<QByteArray>("piece");
    QTest::newRow("lines") << QByteArray("wire a;\n");
    QTest::newRow("open brackets") << QByteArray("`include <\n");
    QTest::newRow("open quotes") << QByteArray("`include \"\n");
    QTest::newRow("open brackets in a line") << QByteArray("`include <");
    QTest::newRow("directives only") << QByteArray("`include");
}

void TestSourceCheck::checksInLinearTime()
{
    QFETCH(QByteArray, piece);
    const auto nanoseconds = [&](int size) {
        const QByteArray text = piece.repeated(size / piece.size());
        return TarnTest::leastNanoseconds([&] { check(text); });
    };
    // Sixteen times the text: quadratic time would be 256-fold.
    const qint64 small = nanoseconds(50000);
    const qint64 large = nanoseconds(800000);
    QVERIFY2(large < small * 80 + 2000000,
             qPrintable(QStringLiteral("%1 ns and %2 ns").arg(small).arg(large)));
}

void TestSourceCheck::followsIncludes_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("found");
    QTest::newRow("quotes") << QByteArray("`include \"bad.vh\"\n") << true;
    QTest::newRow("brackets") << QByteArray("`include <bad.vh>\n") << true;
    QTest::newRow("at the end of the text") << QByteArray("`include \t\"bad.vh\"") << true;
    QTest::newRow("behind one without end") << QByteArray("`include <\n`include <bad.vh>") << true;
    QTest::newRow("two in a line") << QByteArray("`include \"a\" `include \"bad.vh\"") << true;
    QTest::newRow("no end") << QByteArray("`include \"bad.vh") << false;
    QTest::newRow("end in the next line") << QByteArray("`include \"bad.vh\n\"") << false;
    QTest::newRow("other end") << QByteArray("`include <bad.vh\"") << false;
}

void TestSourceCheck::followsIncludes()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, found);
    TarnTest::writeFile(m_folder.filePath(QStringLiteral("bad.vh")), QByteArray("\0", 1));
    QCOMPARE(check(text).size(), found ? 1 : 0);
    QCOMPARE(check(text, nullptr, true).size(), 0); // VHDL has no such directive.
}

void TestSourceCheck::namesWhatTheElaboratorCannotRead_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("expected"); // Behind the path.
    const auto row = [](const char *name, const QByteArray &text, const char *expected) {
        QTest::newRow(name) << text << QString::fromLatin1(expected);
    };
    constexpr int Longest = 1024 * 1024;
    row("text", "module m; endmodule\n", "");
    row("empty", "", ": The file is empty.");
    row("binary", QByteArray("a\0b", 3),
        ": The file is not text: it contains NUL bytes. Binary files and UTF-16 text cannot be "
        "read.");
    row("longest line", "\n" + QByteArray(Longest, 'a') + "\n", "");
    row("longer line", "\n" + QByteArray(Longest + 1, 'a') + "\n",
        ":2: The line is longer than 1 MB. Break it into shorter lines.");
    row("longer line without an end", QByteArray(Longest + 1, 'a'),
        ":1: The line is longer than 1 MB. Break it into shorter lines.");
}

void TestSourceCheck::namesWhatTheElaboratorCannotRead()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, expected);
    for (const bool vhdl : {false, true}) {
        QString found = check(text, nullptr, vhdl).join(QLatin1Char('\n'));
        found.remove(0, found.indexOf(QLatin1String("a.v")) + 3 * (found.isEmpty() ? 0 : 1));
        QCOMPARE(found, expected);
    }
}

void TestSourceCheck::tellsWordsOfTheSources()
{
    SourceWords words;
    check("module m; endmodule\n", &words);
    QVERIFY(!words.hidesCode && !words.namesTool);
    check("// synopsys Translate_Off\n", &words);
    QVERIFY(words.hidesCode && !words.namesTool);
    words = SourceWords();
    check("`ifdef VERILATOR\n", &words);
    QVERIFY(!words.hidesCode && words.namesTool);
    words = SourceWords();
    check("-- synopsys translate_off, VERILATOR\n", &words, true);
    QVERIFY(!words.hidesCode && !words.namesTool);
}

TARN_TEST_MAIN(TestSourceCheck)
#include "tst_sourcecheck.moc"
