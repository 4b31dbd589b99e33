// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "entrypoint.h"

#include <core/actionmanager.h>
#include <core/coreconstants.h>
#include <core/ifilewizardfactory.h>
#include <core/iview.h>
#include <core/viewmanager.h>
#include <extsys/iplugin.h>
#include <other/otherhost.h>
#include <qutil/eventmanager.h>
#include <qutil/ievent.h>
#include <support/files.h>
#include <support/modeltext.h>
#include <support/windowtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QJsonObject>
#include <QLineEdit>
#include <QPluginLoader>
#include <QPushButton>
#include <QRegExp>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

using namespace TarnTest;

namespace {

class Event : public QUtil::IEvent
{
public:
    Event(const QString &name, const QMap<QString, QVariant> &values)
        : m_name(name)
        , m_values(values)
    {
    }
    QString name() const override { return m_name; }
    QVariant get(const QString &key) const override { return m_values.value(key); }

private:
    QString m_name;
    QMap<QString, QVariant> m_values;
};

void send(const QString &name, const QMap<QString, QVariant> &values)
{
    const Event event(name, values);
    QUtil::EventManager::instance()->send(&event);
}

template <typename Widget>
Widget *child(QWidget *parent, const char *name)
{
    auto *found = parent->findChild<Widget *>(QLatin1String(name));
    if (!found)
        qFatal("There is no %s.", name);
    return found;
}

QString rows(QWidget *window, const char *tree)
{
    return modelText(child<QTreeWidget>(window, tree)->model());
}

void press(QWidget *window, QDialogButtonBox::StandardButton button)
{
    child<QDialogButtonBox>(window, "buttonBox")->button(button)->click();
}

/// The results of a search for @p pattern as text; @p mode names the button of the search mode.
QString found(QDialog *dialog, const char *mode, const QString &pattern)
{
    child<QAbstractButton>(dialog, mode)->click();
    child<QLineEdit>(dialog, "lineEditName")->setText(pattern);
    child<QPushButton>(dialog, "pushButtonSearch")->click();
    return rows(dialog, "treeWidget");
}

} // namespace

/// One session of another host, from loading the plug-in to the end. Each test function continues
/// where the previous one ended.
class TestOtherSession : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void loads();
    void initialises();
    void wizardCreatesFile();
    void missingManagersAnswerNothing_data();
    void missingManagersAnswerNothing();
    void opensFile();
    void checkNamesWhatIsMissing();
    void searchFindsNamesThatComeByValue();
    void drivenNetIsGreyForProbeOut();
    void clockIsLookedUp();
    void savesWhatWasChosen();
    void eventsRaiseBanners();
    void eventsWithoutManagersAreNoCrash();
    void synthesisToolIsAsked();
    void closes();
    void shutsDown();
    void startsAgain();
    void leavesNothingBehind();

private:
    QWidget *view() const { return Core::ViewManager::instance()->views().value(0); }
    QAction *saveAction() const
    {
        return Core::ActionManager::action(Core::Constants::A_FILE_SAVE,
                                           QStringLiteral("TARN.TarnViewManager.Context"));
    }
    int banners() const { return view()->findChildren<QWidget *>("TARN__ReloadBanner").size(); }
    /// Opens the dialog of the first port in @p tree and from there the search, which @p use has to
    /// close.
    void editPort(const char *tree, const QString &title,
                  const std::function<void(QDialog *)> &use);

    QTemporaryDir m_dir;
    QString m_file;
    QPluginLoader m_loader;
    QPointer<ExtSys::IPlugin> m_plugin;
};

void TestOtherSession::initTestCase()
{
    QVERIFY(m_dir.isValid());
    m_file = m_dir.filePath("session.tarn");
    OtherHost::self().design = {
        {"Top", "top"},
        {"Files", QVariantList{QVariantMap{{"Path", "/design/top.v"}}}},
    };
}

void TestOtherSession::loads()
{
    m_loader.setFileName(QStringLiteral(TARN_PLUGIN_FILE));
    QCOMPARE(m_loader.metaData().value("IID").toString(),
             QStringLiteral("TARN.TarnInserterPlugin/1.0"));
    m_plugin = qobject_cast<ExtSys::IPlugin *>(m_loader.instance());
    QVERIFY2(m_plugin, qPrintable(m_loader.errorString()));
    QCOMPARE(viewsInPlugin(), 0);
}

void TestOtherSession::initialises()
{
    QVERIFY(m_plugin->initialize());
    m_plugin->extensionsInitialized();
    QCOMPARE(OtherHost::self().pool.size(), 1);
    QVERIFY(saveAction());
    QVERIFY(!saveAction()->isEnabled());
}

void TestOtherSession::wizardCreatesFile()
{
    auto *wizard = qobject_cast<Core::IFileWizardFactory *>(OtherHost::self().pool.first());
    QVERIFY(wizard);
    QCOMPARE(wizard->id(), QStringLiteral("MB.Wizard.TARN"));
    script().expectDialog("TARN::NewFileDialog", "New TARN Config File", [](QDialog *dialog) {
        child<QLineEdit>(dialog, "editName")->setText("session");
        press(dialog, QDialogButtonBox::Ok);
    });
    wizard->runWizard(nullptr, m_dir.path());
    QCOMPARE(OtherHost::self().project.files, QStringList(m_file));
}

void TestOtherSession::missingManagersAnswerNothing_data()
{
    QTest::addColumn<bool>("hasEngine");
    QTest::newRow("no task engine") << false;
    QTest::newRow("no managers") << true;
}

void TestOtherSession::missingManagersAnswerNothing()
{
    QFETCH(bool, hasEngine);

    OtherHost &host = OtherHost::self();
    host.hasEngine = hasEngine;
    host.hasDesignManager = host.hasFlowManager = false;
    script().expectBox({QMessageBox::Critical, "Error", "Design files are not exist."});
    QVERIFY(openInPlugin(m_file, "XY70"));
    host.hasEngine = host.hasDesignManager = true;
    QCOMPARE(viewsInPlugin(), 0);
    QCOMPARE(QUtil::EventManager::instance()->subscriptions(), 0);
}

void TestOtherSession::opensFile()
{
    QVERIFY(openInPlugin(m_file, "XY70")); // Still without a flow manager.
    QVERIFY(openInPlugin(m_file, "XY70"));
    QCOMPARE(viewsInPlugin(), 1);
    Core::ViewManager *manager = Core::ViewManager::instance();
    QCOMPARE(manager->views().size(), 1);
    QCOMPARE(manager->views().first()->shortTitle(), QStringLiteral("session.tarn *"));
    QCOMPARE(manager->context(manager->views().first()),
             QStringLiteral("TARN.TarnViewManager.Context"));
    QCOMPARE(saveAction()->text(), QStringLiteral("&Save \"session.tarn\""));
    QVERIFY(saveAction()->isEnabled());
}

void TestOtherSession::checkNamesWhatIsMissing()
{
    const QByteArray before = readFile(m_file);
    ModalScript::Box box{QMessageBox::Critical, "Error",
                         "Your settings contain some errors." + QString(13, ' ')};
    box.detailedText = "Tarn 0: At least one Probe In port or Probe Out port should be enabled";
    script().expectBox(box);
    saveAction()->trigger();
    QCOMPARE(readFile(m_file), before);
}

void TestOtherSession::editPort(const char *tree, const QString &title,
                                const std::function<void(QDialog *)> &use)
{
    script().expectDialog("TARN::ProbeDialog", title, [](QDialog *dialog) {
        child<QAbstractButton>(dialog, "btnAdd")->click();
        press(dialog, QDialogButtonBox::Ok);
    });
    script().expectDialog("TARN::TarnSignalSelectDialog", "Search Nets", use);
    auto *ports = child<QTreeWidget>(view(), tree);
    Q_EMIT ports->itemDoubleClicked(ports->topLevelItem(0), 0);
}

void TestOtherSession::searchFindsNamesThatComeByValue()
{
    child<QPushButton>(view(), "btnProbeInAdd")->click();
    QString all;
    QString plain;
    QString wildcard;
    QString expression;
    QString modules;
    editPort("treeProbeIn", "Probe In Port", [&](QDialog *dialog) {
        all = found(dialog, "radioButtonNormal", QString());
        wildcard = found(dialog, "radioButtonWildcard", "top/u?/*");
        expression = found(dialog, "radioButtonRegularExpression", "top/(clk|done)");
        child<QAbstractButton>(dialog, "checkBoxAdvancedFilter")->click();
        child<QAbstractButton>(dialog, "checkBoxHierarchyView")->click();
        modules = found(dialog, "radioButtonNormal", "/");
        child<QAbstractButton>(dialog, "checkBoxAdvancedFilter")->click();
        plain = found(dialog, "radioButtonNormal", "DATA");
        child<QTreeWidget>(dialog, "treeWidget")->topLevelItem(0)->setSelected(true);
        child<QPushButton>(dialog, "btnAdd")->click();
        press(dialog, QDialogButtonBox::Ok);
    });
    QCOMPARE(all, QStringLiteral("top/data[1:0]\n    top/data[1]\n    top/data[0]\n"
                                 "top/clk\ntop/done\ntop/u0/q\n"));
    QCOMPARE(plain, QStringLiteral("top/data[1:0]\n    top/data[1]\n    top/data[0]\n"));
    QCOMPARE(wildcard, QStringLiteral("top/u0/q\n"));
    QCOMPARE(expression, QStringLiteral("top/clk\ntop/done\n"));
    QCOMPARE(modules, QStringLiteral("top\n    data[1:0]\n        data[1]\n        data[0]\n"
                                     "    clk\n    done\n    leaf:u0\n        q\n"));
    QCOMPARE(rows(view(), "treeProbeIn"),
             QStringLiteral("Probe In0\n    top/data[1:0]\n        top/data[1]\n"
                            "        top/data[0]\n"));
}

void TestOtherSession::drivenNetIsGreyForProbeOut()
{
    child<QPushButton>(view(), "btnProbeOutAdd")->click();
    bool clockIsFree = false;
    bool doneIsFree = true;
    editPort("treeProbeOut", "Probe Out Port", [&](QDialog *dialog) {
        found(dialog, "radioButtonRegularExpression", "top/(clk|done)");
        auto *results = child<QTreeWidget>(dialog, "treeWidget");
        clockIsFree = results->topLevelItem(0)->flags() & Qt::ItemIsEnabled;
        doneIsFree = results->topLevelItem(1)->flags() & Qt::ItemIsEnabled;
        results->topLevelItem(0)->setSelected(true);
        child<QPushButton>(dialog, "btnAdd")->click();
        press(dialog, QDialogButtonBox::Ok);
    });
    QVERIFY(clockIsFree);
    QVERIFY(!doneIsFree);
    QCOMPARE(rows(view(), "treeProbeOut"), QStringLiteral("Probe Out0\n    top/clk\n"));
}

void TestOtherSession::clockIsLookedUp()
{
    child<QCheckBox>(view(), "checkUserClock")->click();
    child<QLineEdit>(view(), "lineEditUserClock")->setText("top/none");
    ModalScript::Box box{QMessageBox::Critical, "Error",
                         "Your settings contain some errors." + QString(13, ' ')};
    box.detailedText = "Tarn 0: The output probe synchronizes with user clock does not exist";
    script().expectBox(box);
    saveAction()->trigger();
    child<QLineEdit>(view(), "lineEditUserClock")->setText("top/clk");
}

void TestOtherSession::savesWhatWasChosen()
{
    // Without a design manager saving does not ask for the synthesis tool.
    OtherHost::self().hasDesignManager = false;
    saveAction()->trigger();
    OtherHost::self().hasDesignManager = true;
    QVERIFY(!saveAction()->isEnabled());
    const QByteArray content = readFile(m_file);
    for (const char *name : {"top/data[1:0]", "top/data[0]", "top/clk"})
        QVERIFY2(content.contains(name), name);
}

void TestOtherSession::eventsRaiseBanners()
{
    send("TE.File.Modified", {{"file", "/design/notes.txt"}}); // Of type 9.
    QCOMPARE(banners(), 0);
    send("TE.File.Modified", {{"file", "/design/top.v"}});
    QCOMPARE(banners(), 1);
    child<QPushButton>(view(), "btnB")->click(); // Cancel.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(banners(), 0);

    send("TE.Option.Change", {{"option", "TopModule"}});
    QCOMPARE(banners(), 1);
    child<QPushButton>(view(), "btnA")->click(); // Reload.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(banners(), 0);
    QCOMPARE(viewsInPlugin(), 1);
}

void TestOtherSession::eventsWithoutManagersAreNoCrash()
{
    OtherHost::self().hasEngine = false;
    send("TE.File.Modified", {{"file", "/design/top.v"}});
    QCOMPARE(banners(), 0);
    QStringList paths{"not called"};
    QVERIFY(QMetaObject::invokeMethod(view(), "includePaths", Q_RETURN_ARG(QStringList, paths)));
    QCOMPARE(paths, QStringList());
    OtherHost::self().hasEngine = true;
    OtherHost::self().options = {{"IncludePath", QStringList{"inc", "/abs"}}};
    QVERIFY(QMetaObject::invokeMethod(view(), "includePaths", Q_RETURN_ARG(QStringList, paths)));
    QCOMPARE(paths, QStringList({"/design/inc", "/abs"}));
}

void TestOtherSession::synthesisToolIsAsked()
{
    OtherHost::self().options = {{"Synthesize_tool", "Synplify"}};
    child<QLineEdit>(view(), "lineEditUserClock")->setText("top/u0/q");
    script().expectBox({QMessageBox::Critical, "Error",
                        "For RTL Design, TARN is only available for OstraSynthesis. Please change "
                        "Synthesis Tool to OstraSynthesis in Configurations."});
    saveAction()->trigger();
    OtherHost::self().options.clear();
    saveAction()->trigger();
    QVERIFY(!saveAction()->isEnabled());
}

void TestOtherSession::closes()
{
    QVERIFY(closeInPlugin(m_file));
    QCOMPARE(viewsInPlugin(), 0);
    QVERIFY(!view());
    QCOMPARE(QUtil::EventManager::instance()->subscriptions(), 0);
    QVERIFY(!closeInPlugin(m_file));
}

void TestOtherSession::shutsDown()
{
    m_plugin->shutDown();
    QVERIFY(!saveAction());
    QCOMPARE(viewsInPlugin(), -1);
    delete OtherHost::self().pool.takeFirst();
    delete m_plugin;
    m_loader.unload();
    QVERIFY(QRegExp("[A-F0-9]").exactMatch("F"));
}

void TestOtherSession::startsAgain()
{
    m_plugin = qobject_cast<ExtSys::IPlugin *>(m_loader.instance());
    QVERIFY2(m_plugin, qPrintable(m_loader.errorString()));
    QVERIFY(m_plugin->initialize());
    QVERIFY(openInPlugin(m_file, "XY70"));
    QCOMPARE(viewsInPlugin(), 1);
    QCOMPARE(rows(view(), "treeProbeOut"), QStringLiteral("Probe Out0\n    top/clk\n"));
    QVERIFY(closeInPlugin(m_file));
    m_plugin->shutDown();
    qDeleteAll(OtherHost::self().pool);
    OtherHost::self().pool.clear();
    delete m_plugin;
    m_loader.unload();
}

void TestOtherSession::leavesNothingBehind()
{
    QCOMPARE(viewsInPlugin(), -1);
    QCOMPARE(QUtil::EventManager::instance()->subscriptions(), 0);
    QCOMPARE(QApplication::topLevelWidgets().size(), 0);
}

TARN_TEST_MAIN(TestOtherSession)
#include "session.moc"
