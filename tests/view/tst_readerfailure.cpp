// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "viewtest.h"

#include <model/tarnconfig.h>
#include <model/tarncore.h>

#include <QApplication>
#include <QTest>

// A file that changes between check and reading cannot be arranged with the real functions.

void TARN::finishTARNFile(const QString &) {}

bool TARN::checkTARNFile(const QString &)
{
    return true;
}

static bool okBeforeReading = true;

QList<TARN::TarnCore *> TARN::readTARNConfigFromXml(const QString &, bool *ok, QString *error)
{
    okBeforeReading = *ok;
    *ok = false;
    if (error)
        *error = QStringLiteral("what the reader says");
    return {new TarnCore(0)};
}

bool TARN::writeTARNConfigToXml(const QList<TarnCore *> &, const QString &)
{
    return true;
}

class TestReaderFailure : public TarnTest::ViewTest
{
    Q_OBJECT

private Q_SLOTS:
    void openFailsWithTheTextOfTheReader()
    {
        TARN::TarnView view;
        QString error;
        QVERIFY(!view.open(path("a.tarn"), QString(), &error));
        QVERIFY(!okBeforeReading);
        QCOMPARE(error, QStringLiteral("what the reader says"));
        QCOMPARE(pagesOf(&view).size(), 0);
        QCOMPARE(extraction().searches, 0);
        QVERIFY(!view.open(path("a.tarn"), QString(), nullptr));
    }
};

TARN_TEST_MAIN(TestReaderFailure)
#include "tst_readerfailure.moc"
