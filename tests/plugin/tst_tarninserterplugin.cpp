// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <core/actionmanager.h>
#include <core/coreconstants.h>
#include <core/ifilewizardfactory.h>
#include <extsys/objectpool.h>
#include <plugin/tarninserterplugin.h>
#include <plugin/tarnviewmanager.h>
#include <support/testcase.h>

#include <QAction>
#include <QApplication>
#include <QTest>

using ExtSys::ObjectPool;
using TARN::TarnInserterPlugin;
using TARN::TarnViewManager;
using namespace TarnTest;

class TestTarnInserterPlugin : public TestCase
{
    Q_OBJECT

public:
    explicit TestTarnInserterPlugin(TarnViewManager *managerAtStart)
        : m_managerAtStart(managerAtStart)
    {
    }

private Q_SLOTS:
    void managerIsThereBeforeTheApplication();
    void goesThroughItsLife();
    void startsAgainAfterItsEnd();
    void managerStartsOnce();

private:
    TarnViewManager *m_managerAtStart;
};

void TestTarnInserterPlugin::managerIsThereBeforeTheApplication()
{
    QVERIFY(m_managerAtStart);
    QCOMPARE(TarnViewManager::instance(), m_managerAtStart);
}

void TestTarnInserterPlugin::goesThroughItsLife()
{
    TarnInserterPlugin plugin;
    ExtSys::IPlugin *asHostSeesIt = &plugin;
    const QPointer<TarnViewManager> manager = TarnViewManager::instance();

    QVERIFY(asHostSeesIt->initialize());
    const auto wizards = ObjectPool::objects<Core::IFileWizardFactory>();
    QCOMPARE(wizards.size(), 1);
    QCOMPARE(wizards.first()->id(), QStringLiteral("MB.Wizard.TARN"));
    QVERIFY(!wizards.first()->parent());
    QVERIFY(manager->findChild<QAction *>());

    asHostSeesIt->extensionsInitialized();
    QCOMPARE(ObjectPool::allObjects().size(), 1);
    QVERIFY(manager);

    asHostSeesIt->shutDown();
    QVERIFY(!manager);
    QVERIFY(!TarnViewManager::instance());
    asHostSeesIt->shutDown();

    ObjectPool::release(&plugin);
}

void TestTarnInserterPlugin::startsAgainAfterItsEnd()
{
    TarnInserterPlugin plugin;
    QVERIFY(!TarnViewManager::instance()); // Shut down above.
    for (int round = 0; round < 2; ++round) {
        QVERIFY(plugin.initialize());
        const QPointer<TarnViewManager> manager = TarnViewManager::instance();
        QVERIFY(manager);
        QCOMPARE(manager->findChildren<QAction *>().size(), 1);
        QCOMPARE(ObjectPool::objects<Core::IFileWizardFactory>().size(), 1);
        plugin.shutDown();
        ObjectPool::release(&plugin);
        QVERIFY(!manager);
    }
}

void TestTarnInserterPlugin::managerStartsOnce()
{
    TarnViewManager *manager = TarnViewManager::ensureInstance();
    QCOMPARE(TarnViewManager::ensureInstance(), manager);
    QAction *command = Core::ActionManager::command(Core::Constants::A_FILE_SAVE);
    manager->onCurrentViewChanged(nullptr); // Nothing to show it with yet.
    QVERIFY(manager->findChildren<QAction *>().isEmpty());
    manager->initialize();
    manager->initialize();
    QCOMPARE(manager->findChildren<QAction *>().size(), 1);
    QVERIFY(!command->isEnabled());
    manager->deinit();
}

int main(int argc, char *argv[])
{
    TarnViewManager *manager = TarnViewManager::instance();
    QApplication app(argc, argv);
    TestTarnInserterPlugin test(manager);
    return QTest::qExec(&test, argc, argv);
}
#include "tst_tarninserterplugin.moc"
