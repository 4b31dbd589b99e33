// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/librarysymbols.h>
#include <support/testcase.h>

#include <QJsonObject>
#include <QPluginLoader>
#include <QTest>

using namespace TarnTest;

/// The plug-in library as a file: what a host reads before loading it, and what it exports.
class TestLibrary : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void metaDataNamesInterfaceAndClass();
    void exportsWhatHostsCallAndNothingElse();
};

void TestLibrary::metaDataNamesInterfaceAndClass()
{
    const QPluginLoader loader(QStringLiteral(TARN_PLUGIN_FILE));
    const QJsonObject metaData = loader.metaData();
    QCOMPARE(metaData.value("IID").toString(), QStringLiteral("TARN.TarnInserterPlugin/1.0"));
    QCOMPARE(metaData.value("className").toString(), QStringLiteral("TarnInserterPlugin"));
    QVERIFY(!loader.isLoaded());
}

void TestLibrary::exportsWhatHostsCallAndNothingElse()
{
    QCOMPARE(exportedSymbols(TARN_PLUGIN_FILE),
             QStringList({
                 "TARN::TarnViewManager::closeTarnView(QString const&)",
                 "TARN::TarnViewManager::deinit()",
                 "TARN::TarnViewManager::ensureInstance()",
                 "TARN::TarnViewManager::initialize()",
                 "TARN::TarnViewManager::instance()",
                 "TARN::TarnViewManager::metaObject() const",
                 "TARN::TarnViewManager::onActSave()",
                 "TARN::TarnViewManager::onCurrentViewChanged(Core::IView*)",
                 "TARN::TarnViewManager::onTarnViewClosed(Core::IView*)",
                 "TARN::TarnViewManager::onTarnViewModified(bool)",
                 "TARN::TarnViewManager::openTarnView(QString const&, "
                 "DEV::DeviceArg const&)",
                 "TARN::TarnViewManager::qt_metacall(QMetaObject::Call, int, void**)",
                 "TARN::TarnViewManager::qt_metacast(char const*)",
                 "TARN::TarnViewManager::staticMetaObject",
                 "TARN::TarnViewManager::tarnViews() const",
                 "qt_plugin_instance",
                 "qt_plugin_query_metadata",
                 "typeinfo for TARN::TarnViewManager",
                 "typeinfo name for TARN::TarnViewManager",
             }));
}

QTEST_GUILESS_MAIN(TestLibrary)
#include "tst_library.moc"
