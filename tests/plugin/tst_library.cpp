// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/testcase.h>

#include <QJsonObject>
#include <QPluginLoader>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

using namespace TarnTest;

/// The plug-in library as a file: what a host reads before loading it, and what it exports.
class TestLibrary : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void metaDataNamesInterfaceAndClass();
    void exportsOnlyManagerAndPluginFunctions();
};

void TestLibrary::metaDataNamesInterfaceAndClass()
{
    const QPluginLoader loader(QStringLiteral(TARN_PLUGIN_FILE));
    const QJsonObject metaData = loader.metaData();
    QCOMPARE(metaData.value("IID").toString(), QStringLiteral("TARN.TarnInserterPlugin/1.0"));
    QCOMPARE(metaData.value("className").toString(), QStringLiteral("TarnInserterPlugin"));
    QVERIFY(!loader.isLoaded());
}

void TestLibrary::exportsOnlyManagerAndPluginFunctions()
{
    QProcess nm;
    nm.start("nm", {"-D", "-C", "--defined-only", TARN_PLUGIN_FILE});
    QVERIFY2(nm.waitForFinished(), qPrintable(nm.errorString()));
    QCOMPARE(nm.exitCode(), 0);

    // Linkers, sanitizers and coverage add symbols of their own, beginning with underscores.
    const QRegularExpression own("TARN::TarnViewManager|^qt_plugin_(instance|query_metadata)$|^_");
    const QRegularExpression lines("[\\r\\n]+");
    QStringList plugin;
    QStringList others;
    const QStringList output = QString::fromLocal8Bit(nm.readAllStandardOutput()).split(lines);
    for (const QString &line : output) {
        const QString symbol = line.section(' ', 2);
        if (symbol.startsWith("qt_plugin_"))
            plugin.append(symbol);
        else if (!symbol.isEmpty() && !own.match(symbol).hasMatch())
            others.append(symbol);
    }
    plugin.sort();
    QCOMPARE(plugin, QStringList({"qt_plugin_instance", "qt_plugin_query_metadata"}));
    QCOMPARE(others, QStringList());
    QVERIFY(output.join('\n').contains("TARN::TarnViewManager::instance()"));
}

QTEST_GUILESS_MAIN(TestLibrary)
#include "tst_library.moc"
