// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <support/files.h>
#include <support/testcase.h>

#include <extsys/iplugin.h>
#include <extsys/objectpool.h>
#include <extsys/pluginmanager.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using ExtSys::PluginManager;

namespace {

constexpr char LogVariable[] = "TARN_FAKE_PLUGIN_LOG";

const QList<ExtSys::AcceptedPlugin> accepted = {
    {QStringLiteral("Test.Plugin/1.0"), QStringLiteral("FirstPlugin")},
    {QStringLiteral("Test.Plugin/1.0"), QStringLiteral("SecondPlugin")},
    {QStringLiteral("Test.Plugin/1.0"), QStringLiteral("FailingPlugin")},
};

constexpr char Expected[] = "class \"FirstPlugin\" with interface id \"Test.Plugin/1.0\" or "
                            "class \"SecondPlugin\" with interface id \"Test.Plugin/1.0\" or "
                            "class \"FailingPlugin\" with interface id \"Test.Plugin/1.0\"";

QString pluginLog()
{
    return QString::fromLatin1(qgetenv(LogVariable));
}

} // namespace

class TestPluginManager : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void bringsPluginsUpAndDownInOrder();
    void secondShutDownIsHarmless();
    void loadedPluginsThatWereNeverInitialisedAreOnlyDeleted();
    void failedPluginTakesNoFurtherPart();
    void refusesBeforeLoading_data();
    void refusesBeforeLoading();
    void refusesRootThatIsNoPlugin();
    void oneRefusalKeepsTheOthers();
    void sameClassTwiceIsRefused();
    void linksToOneLibraryCountOnce();
    void otherFilesAreIgnored();
    void missingFolderIsAnError();

private:
    /// Copies the fake plug-in @p fake into the folder under @p name and returns its path.
    QString place(const QString &fake, const QString &name);

    QScopedPointer<QTemporaryDir> m_folder;
};

void TestPluginManager::init()
{
    TestCase::init();
    m_folder.reset(new QTemporaryDir);
    qputenv(LogVariable, "");
}

QString TestPluginManager::place(const QString &fake, const QString &name)
{
    const QString path = m_folder->filePath(name);
    if (!QFile::copy(QStringLiteral(FAKES_DIR "/fake_%1.so").arg(fake), path))
        qFatal("cannot copy the fake plug-in %s", qPrintable(fake));
    return path;
}

void TestPluginManager::bringsPluginsUpAndDownInOrder()
{
    place(QStringLiteral("second"), QStringLiteral("a.so"));
    place(QStringLiteral("first"), QStringLiteral("b.so"));
    {
        QStringList errors;
        PluginManager manager(accepted);
        QVERIFY(manager.loadFolder(m_folder->path(), &errors));
        QCOMPARE(manager.plugins().size(), 2);
        QVERIFY(manager.initialize(&errors));
        QCOMPARE(errors, QStringList());
        QCOMPARE(ExtSys::ObjectPool::allObjects().size(), 4);
        manager.shutDown();
        QCOMPARE(ExtSys::ObjectPool::allObjects().size(), 0);
    }
    QCOMPARE(pluginLog(), QStringLiteral("second loaded\n"
                                         "first loaded\n"
                                         "second initialize\n"
                                         "first initialize\n"
                                         "second extensionsInitialized\n"
                                         "first extensionsInitialized\n"
                                         "first shutDown\n"
                                         "first releases b\n"
                                         "first releases a\n"
                                         "second shutDown\n"
                                         "second releases b\n"
                                         "second releases a\n"
                                         "first destroyed\n"
                                         "second destroyed\n"));
}

void TestPluginManager::secondShutDownIsHarmless()
{
    place(QStringLiteral("first"), QStringLiteral("a.so"));
    {
        QStringList errors;
        PluginManager manager(accepted);
        manager.loadFolder(m_folder->path(), &errors);
        manager.initialize(&errors);
        manager.shutDown();
        manager.shutDown();
    }
    QCOMPARE(pluginLog().count(QStringLiteral("shutDown")), 1);
}

void TestPluginManager::loadedPluginsThatWereNeverInitialisedAreOnlyDeleted()
{
    place(QStringLiteral("first"), QStringLiteral("a.so"));
    {
        QStringList errors;
        PluginManager manager(accepted);
        QVERIFY(manager.loadFolder(m_folder->path(), &errors));
    }
    QCOMPARE(pluginLog(), QStringLiteral("first loaded\nfirst destroyed\n"));
}

void TestPluginManager::failedPluginTakesNoFurtherPart()
{
    const QString path = place(QStringLiteral("failing"), QStringLiteral("a.so"));
    place(QStringLiteral("first"), QStringLiteral("b.so"));
    QStringList errors;
    PluginManager manager(accepted);
    QVERIFY(manager.loadFolder(m_folder->path(), &errors));
    QVERIFY(!manager.initialize(&errors));
    QCOMPARE(errors, QStringList(QStringLiteral("Plug-in \"FailingPlugin\" (%1) failed to "
                                                "initialize.")
                                     .arg(path)));
    QCOMPARE(manager.plugins().size(), 1);
    manager.shutDown();
    QCOMPARE(pluginLog(), QStringLiteral("failing loaded\n"
                                         "first loaded\n"
                                         "failing initialize\n"
                                         "first initialize\n"
                                         "failing releases b\n"
                                         "failing releases a\n"
                                         "failing destroyed\n"
                                         "first extensionsInitialized\n"
                                         "first shutDown\n"
                                         "first releases b\n"
                                         "first releases a\n"));
}

void TestPluginManager::refusesBeforeLoading_data()
{
    QTest::addColumn<QString>("fake");
    QTest::addColumn<QString>("message");
    QTest::newRow("interface id")
        << "wrongid"
        << "%1 is refused: found class \"FirstPlugin\" with interface id \"Test.Plugin/2.0\", "
           "expected %2.";
    QTest::newRow("class name")
        << "wrongclass"
        << "%1 is refused: found class \"OtherPlugin\" with interface id \"Test.Plugin/1.0\", "
           "expected %2.";
    QTest::newRow("no plug-in") << "plain"
                                << "%1 is not a plug-in: ";
}

void TestPluginManager::refusesBeforeLoading()
{
    QFETCH(QString, fake);
    QFETCH(QString, message);

    const QString path = place(fake, QStringLiteral("a.so"));
    QStringList errors;
    PluginManager manager(accepted);
    QVERIFY(!manager.loadFolder(m_folder->path(), &errors));
    QCOMPARE(errors.size(), 1);
    message.replace(QStringLiteral("%1"), path).replace(QStringLiteral("%2"), Expected);
    QCOMPARE(errors.first().left(message.size()), message);
    QVERIFY(errors.first().endsWith(fake == QLatin1String("plain") ? QString() : message));
    QVERIFY(manager.plugins().isEmpty());
    QCOMPARE(pluginLog(), QString());
}

void TestPluginManager::refusesRootThatIsNoPlugin()
{
    const QString path = place(QStringLiteral("strangeroot"), QStringLiteral("a.so"));
    QStringList errors;
    PluginManager manager(accepted);
    QVERIFY(!manager.loadFolder(m_folder->path(), &errors));
    QCOMPARE(errors, QStringList(QStringLiteral("%1: its root object is a FirstPlugin, not an "
                                                "ExtSys::IPlugin.")
                                     .arg(path)));
    QVERIFY(manager.plugins().isEmpty());
}

void TestPluginManager::oneRefusalKeepsTheOthers()
{
    const QString text = m_folder->filePath(QStringLiteral("a.so"));
    TarnTest::writeFile(text, "no library at all");
    place(QStringLiteral("first"), QStringLiteral("b.so"));
    QStringList errors;
    PluginManager manager(accepted);
    QVERIFY(!manager.loadFolder(m_folder->path(), &errors));
    QCOMPARE(errors.size(), 1);
    QVERIFY2(errors.first().startsWith(text + QStringLiteral(" is not a plug-in: ")),
             qPrintable(errors.first()));
    QCOMPARE(manager.plugins().size(), 1);
}

void TestPluginManager::sameClassTwiceIsRefused()
{
    const QString first = place(QStringLiteral("first"), QStringLiteral("a.so"));
    const QString second = place(QStringLiteral("first"), QStringLiteral("b.so"));
    QStringList errors;
    PluginManager manager(accepted);
    QVERIFY(!manager.loadFolder(m_folder->path(), &errors));
    QCOMPARE(errors, QStringList(QStringLiteral("%1 is refused: class \"FirstPlugin\" is already "
                                                "loaded from %2.")
                                     .arg(second, first)));
    QCOMPARE(manager.plugins().size(), 1);
}

void TestPluginManager::linksToOneLibraryCountOnce()
{
    const QString path = place(QStringLiteral("first"), QStringLiteral("liba.so.1.0"));
    QVERIFY(QFile::link(path, m_folder->filePath(QStringLiteral("liba.so"))));
    QVERIFY(QFile::link(path, m_folder->filePath(QStringLiteral("liba.so.1"))));
    QStringList errors;
    PluginManager manager(accepted);
    QVERIFY2(manager.loadFolder(m_folder->path(), &errors), qPrintable(errors.join('\n')));
    QCOMPARE(manager.plugins().size(), 1);
}

void TestPluginManager::otherFilesAreIgnored()
{
    TarnTest::writeFile(m_folder->filePath(QStringLiteral("readme.txt")), "text");
    TarnTest::writeFile(m_folder->filePath(QStringLiteral("folder.so/file")), "text");
    QStringList errors;
    PluginManager manager(accepted);
    QVERIFY(manager.loadFolder(m_folder->path(), &errors));
    QVERIFY(manager.plugins().isEmpty());
    QVERIFY(manager.initialize(&errors));
}

void TestPluginManager::missingFolderIsAnError()
{
    const QString missing = m_folder->filePath(QStringLiteral("missing"));
    QStringList errors;
    PluginManager manager(accepted);
    QVERIFY(!manager.loadFolder(missing, &errors));
    QCOMPARE(errors,
             QStringList(QStringLiteral("The plug-in folder %1 does not exist.").arg(missing)));
}

QTEST_GUILESS_MAIN(TestPluginManager)
#include "tst_pluginmanager.moc"
