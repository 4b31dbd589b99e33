// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/sources/preprocessedtext.h>

#include <support/testcase.h>

#include <QApplication>
#include <QTest>

using namespace NETWEIR::Internal;

class TestPreprocessedText : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void textsAreSplitByFile();
    void textsDoNotDependOnThePiecesOfTheOutput();
    void linesAreMappedToTheirFiles_data();
    void linesAreMappedToTheirFiles();
    void linesOutsideHaveNoOrigin();
    void hiddenLinesAreThoseOfTheUser_data();
    void hiddenLinesAreThoseOfTheUser();
};

void TestPreprocessedText::textsAreSplitByFile()
{
    const PreprocessedText text("`line 1 \"s0/a.v\" 1\none\n`line 1 \"i0/d.vh\" 1\ntwo\n"
                                "`line 2 \"i0/d.vh\" 2\n`line 2 \"s0/a.v\" 0\nthree\n"
                                "`line 9 \"s0/a.v\" 2\n`line 1 \"s0/b.v\" 1\nfour",
                                {{"s0/a.v", QString()}, {"s0/b.v", QString()}, {"c", QString()}},
                                {});
    QCOMPARE(text.texts(), QVector<QByteArray>({"one\ntwo\nthree\n", "four", ""}));
}

void TestPreprocessedText::textsDoNotDependOnThePiecesOfTheOutput()
{
    const QByteArray output("`line 1 \"s0/a.v\" 1\none\f\n`line 1 \"i0/d.vh\" 1\ntwo\n"
                            "`line 2 \"i0/d.vh\" 2\n`line 2 \"s0/a.v\" 0\nthree\n"
                            "`protected\nsecret\n`endprotected\n"
                            "`line 1 \"s0/b.v\" 1\nfour /*verilator translate_off*/\nfive");
    const QVector<PathAlias> files{{"s0/a.v", "/a.v"}, {"s0/b.v", "/b.v"}, {"c", "/c.v"}};
    const PreprocessedText whole(output, files, {});
    QCOMPARE(whole.complete(), 3);
    for (int size = 1; size < output.size(); ++size) {
        PreprocessedText pieces(files, {});
        for (int at = 0; at < output.size(); at += size) {
            pieces.add(output.mid(at, size));
            const int complete = pieces.complete();
            QCOMPARE(complete, at + size < output.indexOf("four") ? 0 : 1);
            for (int text = 0; text < complete; ++text)
                QCOMPARE(pieces.texts()[text], whole.texts()[text]);
        }
        pieces.finish();
        QCOMPARE(pieces.texts(), whole.texts());
        QCOMPARE(pieces.warnings(), whole.warnings());
        for (int line = 1; line < 8; ++line)
            QCOMPARE(fileAndLine(pieces.place({0, line})), fileAndLine(whole.place({0, line})));
    }
}

void TestPreprocessedText::linesAreMappedToTheirFiles_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("expected");
    QTest::newRow("first") << 1 << "/my dir/a.v:1";
    QTest::newRow("second") << 2 << "/my dir/a.v:2";
    QTest::newRow("included") << 3 << "/the includes/d.vh:1";
    QTest::newRow("behind the include") << 4 << "/my dir/a.v:4";
    QTest::newRow("in a file with a blank") << 5 << "/my dir/e.vh:1";
    QTest::newRow("going on in it") << 6 << "/my dir/e.vh:7";
    QTest::newRow("included from there") << 7 << "/my dir/f.vh:1";
    QTest::newRow("behind that") << 8 << "/my dir/e.vh:9";
    QTest::newRow("back in the source") << 9 << "/my dir/a.v:6";
    QTest::newRow("as the source says") << 10 << "gen.src:300";
    QTest::newRow("and its next line") << 11 << "gen.src:301";
}

void TestPreprocessedText::linesAreMappedToTheirFiles()
{
    QFETCH(int, line);
    QFETCH(QString, expected);
    // As the preprocessor prints it: names are cut at blanks except where a file begins.
    const PreprocessedText text("`line 1 \"s0/a.v\" 1\n1\n2\n"
                                "`line 1 \"i0/d.vh\" 1\n3\n`line 2 \"i0/d.vh\" 2\n"
                                "`line 4 \"s0/a.v\" 0\n4\n"
                                "`line 1 \"/my dir/e.vh\" 1\n5\n`line 7 \"/my\" 0\n6\n"
                                "`line 1 \"/my dir/f.vh\" 1\n7\n`line 12 \"/my\" 0\n"
                                "`line 9 \"/my\" 0\n8\n`line 10 \"/my\" 2\n"
                                "`line 6 \"s0/a.v\" 0\n9\n"
                                "`line 300 \"gen.src\" 0\n10\n11\n",
                                {{"s0/a.v", QStringLiteral("/my dir/a.v")}},
                                {{"i0", QStringLiteral("/the includes")}});
    QCOMPARE(fileAndLine(text.place({0, line})), expected);
    QCOMPARE(text.path("s0/a.v"), QStringLiteral("/my dir/a.v"));
    QCOMPARE(text.path("i0/d.vh"), QStringLiteral("/the includes/d.vh"));
    QCOMPARE(text.path("x"), QString());
}

void TestPreprocessedText::linesOutsideHaveNoOrigin()
{
    const PreprocessedText text("stray\n`line 1 \"a\" 1\none\n",
                                {{"a", QStringLiteral("a.v")}, {"b", QStringLiteral("b.v")}}, {});
    QCOMPARE(text.texts(), QVector<QByteArray>({"one\n", ""}));
    QCOMPARE(fileAndLine(text.place({0, 0})), QStringLiteral("a.v:0"));
    QCOMPARE(fileAndLine(text.place({1, 3})), QStringLiteral("b.v:3")); // Not reached.
    QCOMPARE(text.path("b"), QStringLiteral("b.v"));
    QCOMPARE(fileAndLine(text.place({-1, 1})), QStringLiteral(":0"));
    QCOMPARE(fileAndLine(text.place({2, 1})), QStringLiteral(":0"));
}

/// Line 2 of a.v includes d.vh.
void TestPreprocessedText::hiddenLinesAreThoseOfTheUser_data()
{
    QTest::addColumn<QByteArray>("begin");
    QTest::addColumn<QByteArray>("end");
    QTest::addColumn<QString>("warning");
    QTest::newRow("marks") << QByteArray("/*verilator synopsys translate_off*/")
                           << QByteArray("/*verilator synopsys translate_on*/ x") << QString();
    QTest::newRow("encrypted") << QByteArray("`protected") << QByteArray("`endprotected")
                               << QStringLiteral("WARNING: a.v:1: The encrypted code from this "
                                                 "line on is left out.");
}

void TestPreprocessedText::hiddenLinesAreThoseOfTheUser()
{
    QFETCH(QByteArray, begin);
    QFETCH(QByteArray, end);
    QFETCH(QString, warning);
    const PreprocessedText text("`line 1 \"a\" 1\n" + begin +
                                    "\n`line 1 \"i/d.vh\" 1\none\ntwo\n`line 3 \"a\" 2\nthree\n" +
                                    end + "\nfive\n",
                                {{"a", QStringLiteral("a.v")}}, {{"i", QStringLiteral("/i")}});
    QCOMPARE(text.texts()[0].simplified(), warning.isEmpty() ? "x five" : "five");
    QStringList hidden;
    for (const QString &file : {QStringLiteral("a.v"), QStringLiteral("/i/d.vh")}) {
        for (int line = 1; line <= 5; ++line) {
            if (text.hides({file, line}))
                hidden.append(fileAndLine({file, line}));
        }
    }
    QStringList expected = {QStringLiteral("a.v:3"), QStringLiteral("/i/d.vh:1"),
                            QStringLiteral("/i/d.vh:2")};
    if (!warning.isEmpty()) { // The lines of the directives hold nothing else.
        expected.prepend(QStringLiteral("a.v:1"));
        expected.insert(2, QStringLiteral("a.v:4"));
    }
    QCOMPARE(hidden, expected);
    QCOMPARE(text.warnings().join(QLatin1Char('\n')), warning);
}

TARN_TEST_MAIN(TestPreprocessedText)
#include "tst_preprocessedtext.moc"
