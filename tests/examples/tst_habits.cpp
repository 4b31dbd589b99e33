// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designfolder.h"

#include <support/testcase.h>

#include <QApplication>
#include <QDir>
#include <QTest>

namespace {

/// Variables that the file lists use. Nobody sets NOBODY_SETS_THIS.
void setEnvironment(const QDir &folder)
{
    qputenv("PROJECT_ROOT", folder.path().toLocal8Bit());
    qputenv("LIBRARY_NAME", "common_cells");
}

} // namespace

/// Designs as users write them. Each shows a common habit of listing, guarding, ordering or writing
/// files, in a folder in the form of designfolder.h.
class TestHabits : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void habitOpens_data();
    void habitOpens();
};

void TestHabits::habitOpens_data()
{
    QTest::addColumn<QString>("habit");
    const QStringList habits =
        QDir(TARN_HABITS_DIR).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    QVERIFY(habits.size() >= 40);
    for (const QString &habit : habits)
        QTest::newRow(qPrintable(habit)) << habit;
}

void TestHabits::habitOpens()
{
    QFETCH(QString, habit);
    const QDir folder(QStringLiteral(TARN_HABITS_DIR "/") + habit);
    setEnvironment(folder);
    TarnTest::Outcome outcome;
    const QString problems = TarnTest::differencesOf(folder, &outcome);
    QVERIFY2(problems.isEmpty(), qPrintable('\n' + problems));
}

TARN_TEST_MAIN(TestHabits)
#include "tst_habits.moc"
