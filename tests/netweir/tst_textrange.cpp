// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/ground/textrange.h>

#include <support/testcase.h>

#include <QTest>

#include <algorithm>

using namespace NETWEIR::Internal;

class TestTextRange : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void blankedTextKeepsItsLines();
    void linesBegin_data();
    void linesBegin();
};

void TestTextRange::blankedTextKeepsItsLines()
{
    QByteArray text("ab\n\ncd");
    blank(&text, {1, 5});
    QCOMPARE(text, QByteArray("a \n\n d"));
}

void TestTextRange::linesBegin_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QVector<int>>("starts");
    QTest::newRow("empty") << QByteArray() << QVector<int>{0};
    QTest::newRow("one line") << QByteArray("ab") << QVector<int>{0};
    QTest::newRow("line end at the end") << QByteArray("ab\n") << QVector<int>{0, 3};
    QTest::newRow("empty lines") << QByteArray("\n\na\nb") << QVector<int>{0, 1, 2, 4};
}

void TestTextRange::linesBegin()
{
    QFETCH(QByteArray, text);
    const QVector<int> starts = lineStarts(text);
    QTEST(starts, "starts");
    for (int offset = 0; offset <= text.size(); ++offset)
        QCOMPARE(lineStart(text, offset),
                 *(std::upper_bound(starts.begin(), starts.end(), offset) - 1));
}

QTEST_APPLESS_MAIN(TestTextRange)
#include "tst_textrange.moc"
