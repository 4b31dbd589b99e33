// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "testcase.h"

#include <QApplication>
#include <QDebug>
#include <QTest>

class TestTestCase : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void debugLinesAreExact();
    void linesOfFormerFunctionsAreGone();
    void announcedWarningsMatchInPart();
};

void TestTestCase::debugLinesAreExact()
{
    qDebug().noquote().nospace() << " a " << 1;
    qDebug("%s", "b");
    QCOMPARE(debugLines(), (QStringList{QStringLiteral(" a 1"), QStringLiteral("b")}));
    clearDebugLines();
    QVERIFY(debugLines().isEmpty());
    qDebug("left for the next function");
}

void TestTestCase::linesOfFormerFunctionsAreGone()
{
    QVERIFY(debugLines().isEmpty());
}

void TestTestCase::announcedWarningsMatchInPart()
{
    expectWarning(QStringLiteral("in the midd"));
    expectWarning(QStringLiteral("^critical$"));
    qWarning("words in the middle");
    qCritical("critical");
    QVERIFY(debugLines().isEmpty());
}

TARN_TEST_MAIN(TestTestCase)
#include "tst_testcase.moc"
