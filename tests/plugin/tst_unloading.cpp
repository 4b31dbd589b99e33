// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/testcase.h>

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace TarnTest;

/// A host closes the library and goes on, while caches and meta-types of the process may still hold
/// data of the library.
class TestUnloading : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void hostOutlivesLibrary_data();
    void hostOutlivesLibrary();
};

void TestUnloading::hostOutlivesLibrary_data()
{
    QTest::addColumn<QStringList>("libraries");
    QTest::newRow("once") << QStringList{"a"};
    QTest::newRow("the same file again") << QStringList{"a", "a"};
    QTest::newRow("another file, elsewhere in memory") << QStringList{"a", "b"};
    QTest::newRow("to and fro") << QStringList{"a", "b", "a", "b", "b"};
}

void TestUnloading::hostOutlivesLibrary()
{
    QFETCH(QStringList, libraries);

    const QTemporaryDir dir;
    QStringList arguments{TARN_EXAMPLE ".json", TARN_EXAMPLE ".tarn"};
    QStringList expected;
    for (const QString &name : qAsConst(libraries)) {
        const QString copy = dir.filePath(name + ".so");
        QVERIFY(QFile::exists(copy) || QFile::copy(TARN_PLUGIN_FILE, copy));
        arguments.append(copy);
        expected += {"initialised: 1", "sensorhub.tarn: 18 items, 4 lines", "closed: 1 0"};
    }
    QProcess host;
    host.start(UNLOADSESSION, arguments);
    QVERIFY2(host.waitForFinished(60000), qPrintable(host.errorString()));
    const QString said = QString::fromLocal8Bit(host.readAllStandardOutput()).trimmed();
    QCOMPARE(said.split('\n'), expected);
    QCOMPARE(host.exitStatus(), QProcess::NormalExit);
    QCOMPARE(host.exitCode(), 0);
}

QTEST_GUILESS_MAIN(TestUnloading)
#include "tst_unloading.moc"
