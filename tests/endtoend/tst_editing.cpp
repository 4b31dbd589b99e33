// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <core/actionmanager.h>
#include <core/coreconstants.h>
#include <core/ifilewizardfactory.h>
#include <core/iview.h>
#include <core/viewmanager.h>
#include <dev/devicearg.h>
#include <extsys/objectpool.h>
#include <extsys/pluginmanager.h>
#include <plugin/tarnviewmanager.h>
#include <support/files.h>
#include <support/modeltext.h>
#include <support/waiting.h>
#include <support/windowtest.h>
#include <te/designmanager.h>
#include <te/project.h>
#include <te/taskengine.h>
#include <te/teconstants.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QDockWidget>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

#include <memory>

using Core::IView;
using Core::ViewManager;
using TARN::TarnViewManager;
using namespace TarnTest;

namespace {

constexpr int Patience = 20000;

void copyFolder(const QString &from, const QString &to)
{
    QDirIterator it(from, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString file = it.next();
        writeFile(to + file.mid(from.size()), readFile(file));
    }
}

/// A configuration with @p count copies of the first core of @p config.
QByteArray withCores(const QByteArray &config, int count)
{
    const QByteArray endTag = "    </Core>\n";
    const int begin = config.indexOf("    <Core ");
    const int end = config.indexOf(endTag) + endTag.size();
    const QByteArray core = config.mid(begin, end - begin);
    QByteArray result = config.left(begin);
    for (int i = 0; i < count; ++i)
        result += QByteArray(core).replace("<Core index=\"0\"",
                                           "<Core index=\"" + QByteArray::number(i) + '"');
    return result + "</TARN_CONFIG>\n";
}

} // namespace

/// The plug-in as users have it: its library loaded by the host, a bundled example, its sources
/// read by the extraction library.
class TestEditing : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void savesExampleByteForByte_data();
    void savesExampleByteForByte();
    void addsAndRemovesCores();
    void refusesToSaveACoreWithoutPorts();
    void asksBeforeClosing();
    void newFileFromTheGallery();
    void brokenSourceRefusesToOpen();
    void changedFileIsReloaded();
    void changedFileIsIgnoredOnCancel();
    void invalidFileClosesTheView();
    void removedFileIsKept();
    void removedFileClosesTheView();
    void changedSourceReadsTheDesignAgain();
    void changedSourceIsIgnoredOnCancel();
    void brokenSourceClosesTheViewOnReload();
    void changedTopModuleIsOffered();

private:
    void useExample(const QString &name);
    IView *open();
    void closeDiscarding();
    QTreeWidget *tree() const { return m_view->findChild<QTreeWidget *>("treeWidget"); }
    QString cores() const { return modelText(tree()->model()); }
    QWidget *banner() const;
    QString bannerText() const;
    void answerBanner(const char *button);
    void chooseFromMenu(const QPoint &pos, const QStringList &entries, const QString &choice);
    void removeCore(int row, QMessageBox::StandardButton answer);
    QPoint itemAt(int row) const;
    static QAction *save() { return Core::ActionManager::command(Core::Constants::A_FILE_SAVE); }
    static TE::DesignManager *design() { return TE::TaskEngine::instance()->designManager(); }

    std::unique_ptr<QTabWidget> m_area;
    std::unique_ptr<ExtSys::PluginManager> m_plugins;
    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_file;
    QString m_source;
    QPointer<IView> m_view;
};

void TestEditing::initTestCase()
{
    m_area.reset(qobject_cast<QTabWidget *>(ViewManager::viewArea()));
    m_area->resize(900, 600);
    m_area->show();
    ViewManager::setDialogParent(m_area.get());

    m_plugins = std::make_unique<ExtSys::PluginManager>(QList<ExtSys::AcceptedPlugin>{
        {QStringLiteral("TARN.TarnInserterPlugin/1.0"), QStringLiteral("TarnInserterPlugin")}});
    QStringList errors;
    const bool loaded = m_plugins->loadFolder(QStringLiteral(TARN_TEST_PLUGIN_DIR), &errors);
    QVERIFY2(loaded, qPrintable(errors.join('\n')));
    const bool initialized = m_plugins->initialize(&errors);
    QVERIFY2(initialized, qPrintable(errors.join('\n')));
    QCOMPARE(m_plugins->plugins().size(), 1);
}

void TestEditing::init()
{
    WindowTest::init();
    useExample("sensorhub");
}

void TestEditing::cleanup()
{
    closeDiscarding();
    design()->closeProject();
    m_dir.reset();
    WindowTest::cleanup();
}

void TestEditing::cleanupTestCase()
{
    m_plugins->shutDown();
    QVERIFY(!TarnViewManager::instance());
    QVERIFY(ExtSys::ObjectPool::allObjects().isEmpty());
    QVERIFY(!save()->isEnabled());
    m_plugins.reset();
    m_area.reset();
}

/// Sets a copy of the example @p name up as the open project.
void TestEditing::useExample(const QString &name)
{
    m_dir = std::make_unique<QTemporaryDir>(QDir::tempPath() + "/with blank XXXXXX");
    QVERIFY(m_dir->isValid());
    copyFolder(QStringLiteral(TARN_EXAMPLES_DIR "/") + name, m_dir->path());
    TE::Project project;
    QString error;
    QVERIFY2(TE::readProject(m_dir->filePath(name + ".json"), &project, &error), qPrintable(error));
    design()->setProject(project);
    m_file = m_dir->filePath(name + ".tarn");
    m_source = project.sources.first().path;
}

/// Opens the example's configuration; null when the plug-in refused.
IView *TestEditing::open()
{
    TarnViewManager::instance()->openTarnView(m_file, design()->project().device);
    m_view = ViewManager::activeView();
    return m_view;
}

void TestEditing::closeDiscarding()
{
    for (IView *view : ViewManager::views())
        QMetaObject::invokeMethod(view, "onBannerClose");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(ViewManager::views().size(), 0);
}

/// The banner in the view, null when there is none.
QWidget *TestEditing::banner() const
{
    QWidget *found = nullptr;
    for (QWidget *child : m_view->findChildren<QWidget *>()) {
        if (child->inherits("TARN::ReloadBanner") && child->isVisible()) {
            if (found)
                return nullptr; // There is never more than one.
            found = child;
        }
    }
    return found;
}

QString TestEditing::bannerText() const
{
    return banner() ? banner()->findChild<QLabel *>("labelFile")->text() : QString();
}

void TestEditing::answerBanner(const char *button)
{
    QVERIFY(banner());
    banner()->findChild<QPushButton *>(button)->click();
}

QPoint TestEditing::itemAt(int row) const
{
    return tree()->visualItemRect(tree()->topLevelItem(row)).center();
}

void TestEditing::chooseFromMenu(const QPoint &pos, const QStringList &entries,
                                 const QString &choice)
{
    script().expectMenu(entries, choice);
    Q_EMIT tree()->customContextMenuRequested(pos);
}

/// Chooses Remove for the core at @p row and answers the question.
void TestEditing::removeCore(int row, QMessageBox::StandardButton answer)
{
    script().expectMenu({"Add", "Remove"}, "Remove");
    script().expectBox({QMessageBox::Question, "Remove TARn",
                        QStringLiteral("Do you want to remove TARN %1 ?").arg(row),
                        QMessageBox::Ok | QMessageBox::Cancel, QString()},
                       answer);
    Q_EMIT tree()->customContextMenuRequested(itemAt(row));
}

void TestEditing::savesExampleByteForByte_data()
{
    QTest::addColumn<QString>("example");
    QTest::newRow("Verilog") << "sensorhub";
    QTest::newRow("SystemVerilog") << "packetfilter";
    QTest::newRow("VHDL and SystemVerilog") << "motordrive";
}

void TestEditing::savesExampleByteForByte()
{
    QFETCH(QString, example);
    useExample(example);
    const QByteArray before = readFile(m_file);
    QVERIFY(open());
    QCOMPARE(m_view->windowTitle(), example + ".tarn");
    QVERIFY(tree()->topLevelItemCount() > 0);
    QVERIFY(!save()->isEnabled());
    QMetaObject::invokeMethod(m_view, "onModified");
    QCOMPARE(m_view->windowTitle(), example + ".tarn *");
    save()->trigger();
    QVERIFY(!save()->isEnabled());
    QCOMPARE(m_view->windowTitle(), example + ".tarn");
    QCOMPARE(QString::fromUtf8(readFile(m_file)), QString::fromUtf8(before));
    // The view's own write does not count as a change.
    QVERIFY(settle(m_view));
    QVERIFY(!banner());
}

void TestEditing::addsAndRemovesCores()
{
    const QByteArray one = withCores(readFile(m_file), 1);
    writeFile(m_file, one);
    QVERIFY(open());
    QCOMPARE(cores(), QStringLiteral("tarn_0\n"));

    chooseFromMenu({5, tree()->viewport()->height() - 5}, {"Add", "-Remove"}, "Add");
    chooseFromMenu(itemAt(0), {"Add", "Remove"}, "Add");
    QCOMPARE(cores(), QStringLiteral("tarn_0\ntarn_1\ntarn_2\n"));
    QCOMPARE(m_view->findChild<QDockWidget *>("dockWidget_2")->windowTitle(),
             QStringLiteral("tarn_2"));
    QCOMPARE(m_view->findChild<QStackedWidget *>("stackedWidget")->count(), 3);
    QCOMPARE(m_view->windowTitle(), QStringLiteral("sensorhub.tarn *"));

    removeCore(2, QMessageBox::Cancel);
    QCOMPARE(cores(), QStringLiteral("tarn_0\ntarn_1\ntarn_2\n"));
    for (const int row : {2, 1})
        removeCore(row, QMessageBox::Ok);
    QCOMPARE(cores(), QStringLiteral("tarn_0\n"));
    QCOMPARE(m_view->findChild<QStackedWidget *>("stackedWidget")->count(), 1);
    script().expectMenu({"Add", "Remove"}, "Remove");
    script().expectBox({QMessageBox::Warning, "Remove TARN", "The only TARN can not be removed.",
                        QMessageBox::Ok, QString()});
    Q_EMIT tree()->customContextMenuRequested(itemAt(0));

    save()->trigger();
    QCOMPARE(readFile(m_file), one);
    QVERIFY(ViewManager::closeView(m_view));
    QVERIFY(open());
    QCOMPARE(cores(), QStringLiteral("tarn_0\n"));
}

void TestEditing::refusesToSaveACoreWithoutPorts()
{
    const QByteArray one = withCores(readFile(m_file), 1);
    writeFile(m_file, one);
    QVERIFY(open());
    chooseFromMenu(itemAt(0), {"Add", "Remove"}, "Add");
    script().expectBox({QMessageBox::Critical, "Error",
                        "Your settings contain some errors." + QString(13, ' '), QMessageBox::Ok,
                        "Tarn 1: At least one Probe In port or Probe Out port should be enabled"});
    save()->trigger();
    QVERIFY(save()->isEnabled());
    QCOMPARE(m_view->windowTitle(), QStringLiteral("sensorhub.tarn *"));
    QCOMPARE(readFile(m_file), one);
}

void TestEditing::asksBeforeClosing()
{
    const ModalScript::Box question{
        QMessageBox::Question, "Save", "Save changes to \"" + m_file + "\" ?",
        QMessageBox::Ok | QMessageBox::Discard | QMessageBox::Cancel, QString()};
    QVERIFY(open());
    QMetaObject::invokeMethod(m_view, "onModified");
    script().expectBox(question, QMessageBox::Cancel);
    QVERIFY(!ViewManager::closeAllViews());
    QCOMPARE(TarnViewManager::instance()->tarnViews().size(), 1);
    script().expectBox(question, QMessageBox::Ok);
    QVERIFY(ViewManager::closeAllViews());
    QCOMPARE(TarnViewManager::instance()->tarnViews().size(), 0);
}

void TestEditing::newFileFromTheGallery()
{
    const auto wizards = ExtSys::ObjectPool::objects<Core::IFileWizardFactory>();
    QCOMPARE(wizards.size(), 1);
    script().expectDialog("TARN::NewFileDialog", "New TARN Config File", [](QDialog *dialog) {
        dialog->findChild<QLineEdit *>("editName")->setText("fresh");
        dialog->accept();
    });
    wizards.first()->runWizard(nullptr, m_dir->path());

    m_file = m_dir->filePath("fresh.tarn");
    QVERIFY(open());
    QCOMPARE(cores(), QStringLiteral("tarn_0\n"));
    QCOMPARE(m_view->windowTitle(), QStringLiteral("fresh.tarn"));
    QCOMPARE(m_view->shortTitle(), QStringLiteral("fresh.tarn *"));
    QVERIFY(save()->isEnabled());
}

void TestEditing::brokenSourceRefusesToOpen()
{
    writeFile(m_source, readFile(m_source) + "\nmodule broken (input a;\n");
    script().expectDialog("TARN::MessageDlg", "Design files contain some errors.",
                          [](QDialog *dialog) { dialog->accept(); });
    QVERIFY(!open());
}

void TestEditing::changedFileIsReloaded()
{
    const QByteArray config = readFile(m_file);
    QVERIFY(open());
    for (const int count : {3, 2}) {
        // Several writes in a row raise one banner.
        writeFile(m_file, withCores(config, 1));
        QVERIFY(waitForFileNotices());
        writeFile(m_file, withCores(config, count));
        QTRY_VERIFY_WITH_TIMEOUT(banner(), Patience);
        QCOMPARE(bannerText(),
                 "The file '" + m_file + "' changed on disk.\nDo you want to reload?");
        answerBanner("btnA");
        QVERIFY(!banner());
        QCOMPARE(tree()->topLevelItemCount(), count);
    }
    QVERIFY(!save()->isEnabled());
}

void TestEditing::changedFileIsIgnoredOnCancel()
{
    const QByteArray config = readFile(m_file);
    QVERIFY(open());
    const QString before = cores();
    for (const int count : {5, 6}) {
        writeFile(m_file, withCores(config, count));
        QTRY_VERIFY_WITH_TIMEOUT(banner(), Patience);
        answerBanner("btnB");
        QVERIFY(!banner());
        QCOMPARE(cores(), before);
    }
    QCOMPARE(readFile(m_file), withCores(config, 6));
}

void TestEditing::invalidFileClosesTheView()
{
    QVERIFY(open());
    QMetaObject::invokeMethod(m_view, "onModified");
    writeFile(m_file, "<TARN_CONFIG>");
    QTRY_VERIFY_WITH_TIMEOUT(banner(), Patience);
    script().expectBox(
        {QMessageBox::Warning, "Reload Tarn", "Invalid TARN file.", QMessageBox::Ok, QString()});
    answerBanner("btnA");
    QTRY_VERIFY_WITH_TIMEOUT(!m_view, Patience);
    QCOMPARE(ViewManager::views().size(), 0);
    QCOMPARE(TarnViewManager::instance()->tarnViews().size(), 0);
}

void TestEditing::removedFileIsKept()
{
    const QByteArray config = readFile(m_file);
    QVERIFY(open());
    QVERIFY(QFile::remove(m_file));
    QTRY_VERIFY_WITH_TIMEOUT(banner(), Patience);
    QCOMPARE(bannerText(),
             "The file '" + m_file + "' has been removed on disk.\nDo you still want to keep it?");
    answerBanner("btnA");
    QVERIFY(!banner());
    QVERIFY(!QFileInfo::exists(m_file));
    QMetaObject::invokeMethod(m_view, "onModified");
    save()->trigger();
    QCOMPARE(readFile(m_file), config);
}

void TestEditing::removedFileClosesTheView()
{
    QVERIFY(open());
    QVERIFY(QFile::remove(m_file));
    QTRY_VERIFY_WITH_TIMEOUT(banner(), Patience);
    answerBanner("btnB");
    QTRY_VERIFY_WITH_TIMEOUT(!m_view, Patience);
    QCOMPARE(TarnViewManager::instance()->tarnViews().size(), 0);
}

void TestEditing::changedSourceReadsTheDesignAgain()
{
    QVERIFY(open());
    for (int i = 0; i < 2; ++i) {
        writeFile(m_source, readFile(m_source) + "\n// changed\n");
        QTRY_VERIFY_WITH_TIMEOUT(banner(), Patience);
        QCOMPARE(bannerText(), QStringLiteral("Design files changed. Do you want to reload?"));
        answerBanner("btnA");
        QVERIFY(m_view);
        QVERIFY(!banner());
    }
    // The netlist is whole: the check finds the clock.
    QMetaObject::invokeMethod(m_view, "onModified");
    save()->trigger();
    QVERIFY(!save()->isEnabled());
}

void TestEditing::changedSourceIsIgnoredOnCancel()
{
    QVERIFY(open());
    for (int i = 0; i < 2; ++i) {
        writeFile(m_source, readFile(m_source) + "\n// changed\n");
        QTRY_VERIFY_WITH_TIMEOUT(banner(), Patience);
        answerBanner("btnB");
        QVERIFY(!banner());
    }
}

void TestEditing::brokenSourceClosesTheViewOnReload()
{
    QVERIFY(open());
    QMetaObject::invokeMethod(m_view, "onModified");
    writeFile(m_source, readFile(m_source) + "\nmodule broken (input a;\n");
    QTRY_VERIFY_WITH_TIMEOUT(banner(), Patience);
    script().expectDialog("TARN::MessageDlg", "Design files contain some errors.",
                          [](QDialog *dialog) { dialog->accept(); });
    answerBanner("btnA");
    QTRY_VERIFY_WITH_TIMEOUT(!m_view, Patience);
}

void TestEditing::changedTopModuleIsOffered()
{
    QVERIFY(open());
    QVERIFY(design()->setOptionValue(TE::OPT::TOPMODULE, "frame_rx"));
    QCOMPARE(bannerText(), QStringLiteral("Top module changed. Do you want to reload?"));
    // Only one banner for the design at a time.
    QVERIFY(design()->setOptionValue(TE::OPT::TOPMODULE, "hub_top"));
    QVERIFY(banner());
    answerBanner("btnA");
    QVERIFY(m_view);
    QVERIFY(!banner());
}

TARN_TEST_MAIN(TestEditing)
#include "tst_editing.moc"
