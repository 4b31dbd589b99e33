// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <workbench/mainwindow.h>

#include <core/actionmanager.h>
#include <core/coreconstants.h>
#include <core/ifilewizardfactory.h>
#include <core/iview.h>
#include <core/projectmanager.h>
#include <core/viewmanager.h>
#include <extsys/objectpool.h>
#include <support/files.h>
#include <support/modeltext.h>
#include <support/windowtest.h>
#include <te/designmanager.h>
#include <te/eventlog.h>
#include <te/taskengine.h>
#include <workbench/messagelog.h>

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

#include <memory>

#include <sys/stat.h>

using TarnTest::ModalScript;
using TarnTest::readFile;
using TarnTest::writeFile;
using Workbench::MainWindow;

namespace {

/// A view that closes only when the test allows it.
class StubbornView : public Core::IView
{
public:
    explicit StubbornView(const QString &title) { setWindowTitle(title); }
    bool agrees = false;
    int asked = 0;

protected:
    void closeEvent(QCloseEvent *event) override
    {
        ++asked;
        event->setAccepted(agrees);
    }
};

/// A view with a line to type in, and actions as a view with steps to undo has them. The actions
/// belong to @p owner, or to the view without one.
class ViewWithActions : public Core::IView
{
public:
    explicit ViewWithActions(const QString &title, QObject *owner = nullptr)
        : undo(new QAction("&Undo " + title, owner ? owner : this))
        , next(new QAction("&Next " + title, owner ? owner : this))
        , line(new QSpinBox(this))
    {
        setWindowTitle(title);
        auto *separator = new QAction(owner ? owner : this);
        separator->setSeparator(true);
        addActions({undo, separator, next});
        undo->setShortcut(QKeySequence::Undo);
        next->setShortcut(Qt::Key_F8);
        for (QAction *action : {undo, next}) {
            action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
            connect(action, &QAction::triggered, this, [this, action] { ran += action; });
        }
    }
    QList<const QAction *> ran;
    QAction *undo;
    QAction *next;
    QWidget *line;
};

class Wizard : public Core::IFileWizardFactory
{
public:
    Wizard(const QString &name, QStringList *runs)
        : m_name(name)
        , m_runs(runs)
    {
    }
    QString id() const override { return m_name; }
    QString displayName() const override { return m_name; }
    QString description() const override { return QStringLiteral("About ") + m_name; }
    void runWizard(QWidget *, const QString &path) override { m_runs->append(m_name + ' ' + path); }

private:
    QString m_name;
    QStringList *m_runs;
};

QAction *actionIn(const QMenu *menu, const QString &text)
{
    for (QAction *action : menu->actions()) {
        if (action->text().remove('&') == text)
            return action;
        if (action->menu()) {
            if (QAction *found = actionIn(action->menu(), text))
                return found;
        }
    }
    return nullptr;
}

QStringList entriesOf(const QMenu *menu)
{
    QStringList entries;
    for (const QAction *action : menu->actions()) {
        if (action->isSeparator())
            entries.append(QStringLiteral("--"));
        else
            entries.append((action->isEnabled() ? "" : "-") + action->text().remove('&'));
    }
    return entries;
}

void pressOk(QDialog *dialog)
{
    dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->click();
}

} // namespace

class TestMainWindow : public TarnTest::WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void menusOfAnEmptyWindow();
    void saveIsTheSharedCommand();
    void dockShowsTheProject();
    void projectThatCannotBeReadLeavesTheOpenOne();
    void listIsOpenedAsAProject();
    void pipeIsNoProject();
    void projectMenuRaisesEvents();
    void checkBoxAndTopLineRaiseEvents();
    void optionsRaiseEventsForWhatChanged();
    void vhdlFilesShowTheirLibraries();
    void libraryOfSelectedFilesIsSet();
    void wrongLibraryIsRefused();
    void wrongMacroIsRefused();
    void addFilesAsksForFiles();
    void pluginsSeeTheOpenProject();
    void activatingAConfigurationOpensIt();
    void withoutPluginOpeningIsRefused();
    void openTellsProjectsFromConfigurations();
    void galleryOffersWizards();
    void galleryWithoutWizardsSaysSo();
    void closingAsksEveryViewAndCancelKeepsItOpen();
    void openingAProjectClosesTheViewsOfTheFormer();
    void closeActsOnTheActiveView();
    void windowTakesItsViewsAlong();
    void editShowsTheActionsOfTheActiveView();
    void editFollowsActionsThatComeAndGo();
    void editForgetsADeletedView();
    void shortcutOfAnActionInEditWorksOnce();
    void actionInEditIsTriggeredByTheKeyboard();

private:
    QMenu *menu(const QString &title) const
    {
        for (const QAction *entry : m_window->menuBar()->actions()) {
            if (entry->text().remove('&') == title)
                return entry->menu();
        }
        return nullptr;
    }
    QStringList titles() const
    {
        QStringList titles;
        for (const QAction *entry : m_window->menuBar()->actions())
            titles.append((entry->isEnabled() ? "" : "-") + entry->text());
        return titles;
    }
    void trigger(const QString &text) const
    {
        for (const QAction *entry : m_window->menuBar()->actions()) {
            if (QAction *action = actionIn(entry->menu(), text)) {
                QVERIFY2(action->isEnabled(), qPrintable(text));
                action->trigger();
                return;
            }
        }
        QFAIL(qPrintable(text + QStringLiteral(" is in no menu")));
    }
    QStringList editEntries() const
    {
        QMenu *edit = menu("Edit");
        QStringList entries = entriesOf(edit);
        // A menu that offers nothing cannot be opened.
        if (!edit->menuAction()->isEnabled())
            entries.prepend("disabled");
        return entries;
    }
    QTreeWidget *files() const { return m_window->findChild<QTreeWidget *>("files"); }
    void select(const QStringList &names)
    {
        files()->clearSelection();
        for (const QString &name : names)
            files()->findItems(name, Qt::MatchExactly).first()->setSelected(true);
    }
    QString path(const QString &name) const { return m_dir->filePath(name); }
    QStringList events()
    {
        return m_events->take().replaceInStrings(m_dir->path() + '/', QString());
    }
    TE::DesignManager *design() const { return TE::TaskEngine::instance()->designManager(); }
    void openSample();
    void openVhdl();

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<Workbench::MessageLog> m_log;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<TarnTest::EventLog> m_events;
};

void TestMainWindow::init()
{
    WindowTest::init();
    m_dir = std::make_unique<QTemporaryDir>();
    m_log = std::make_unique<Workbench::MessageLog>();
    m_window = std::make_unique<MainWindow>(m_log.get());
    m_events = std::make_unique<TarnTest::EventLog>();
    writeFile(path("demo.json"), R"({"version": 1, "top": "main", "sources": [
        {"file": "a.v"}, {"file": "sub/b.sv", "enabled": false}, {"file": "x.tarn"}],
        "options": {"IncludePath": ["inc"]}, "device": {"family": "KX", "name": "KX70"}})");
    writeFile(path("a.v"), "\n");
    writeFile(path("other.json"), R"({"version": 1})");
}

void TestMainWindow::cleanup()
{
    m_events.reset();
    m_window.reset();
    m_log.reset();
    m_dir.reset();
    WindowTest::cleanup();
}

void TestMainWindow::openSample()
{
    m_window->show();
    QVERIFY(m_window->openProject(path("demo.json")));
    QTRY_COMPARE(files()->topLevelItemCount(), 3);
}

void TestMainWindow::openVhdl()
{
    writeFile(path("vhdl.json"), R"({"version": 1, "sources": [{"file": "a.vhd"},
        {"file": "b.vhdl", "library": "DSP", "enabled": false}, {"file": "c.v"}],
        "options": {"VHDL_Standard": "1076-1993"}})");
    QVERIFY(m_window->openProject(path("vhdl.json")));
    QTRY_COMPARE(files()->topLevelItemCount(), 3);
}

void TestMainWindow::menusOfAnEmptyWindow()
{
    QCOMPARE(titles(), QStringList({"&File", "-&Edit", "&Project", "&View"}));
    QCOMPARE(entriesOf(menu("File")),
             QStringList({"New...", "Open...", "--", "-Save", "-Close", "--", "Quit"}));
    QCOMPARE(entriesOf(menu("Project")),
             QStringList({"Open Project...", "-Save Project As...", "-Close Project", "--",
                          "-Add Files...", "-Selected Files", "--", "-Set Top Module...",
                          "-Options..."}));
    QCOMPARE(entriesOf(menu("View")), QStringList({"Project", "Messages"}));
    QCOMPARE(m_window->windowTitle(), QStringLiteral("TARN Workbench"));
    QCOMPARE(Core::ViewManager::dialogParent(), m_window.get());
    openSample();
    QCOMPARE(
        entriesOf(menu("Project")),
        QStringList({"Open Project...", "Save Project As...", "Close Project", "--", "Add Files...",
                     "-Selected Files", "--", "Set Top Module...", "Options..."}));
}

void TestMainWindow::saveIsTheSharedCommand()
{
    QAction *save = menu("File")->actions().at(3);
    QCOMPARE(save, Core::ActionManager::command(Core::Constants::A_FILE_SAVE));
    QCOMPARE(save->shortcut(), QKeySequence(Qt::CTRL + Qt::Key_S));
}

void TestMainWindow::dockShowsTheProject()
{
    openSample();
    QCOMPARE(TarnTest::modelText(files()->model()),
             QStringLiteral("a.v | Verilog\nsub/b.sv | SystemVerilog\nx.tarn | TARN\n"));
    QCOMPARE(files()->topLevelItem(0)->checkState(0), Qt::Checked);
    QCOMPARE(files()->topLevelItem(1)->checkState(0), Qt::Unchecked);
    QCOMPARE(files()->topLevelItem(0)->toolTip(0), path("a.v"));
    QCOMPARE(m_window->findChild<QLineEdit *>("topModule")->text(), QStringLiteral("main"));
    QCOMPARE(m_window->findChild<QLabel *>("options")->text(),
             QStringLiteral("Verilog standard: 1364-2005\nSynthesis tool: OstraSynthesis\n"
                            "Include paths: inc\nDevice: KX70"));
    QCOMPARE(m_window->windowTitle(), QStringLiteral("demo[*] - TARN Workbench"));
    trigger("Close Project");
    QTRY_COMPARE(files()->topLevelItemCount(), 0);
    QVERIFY(!design()->hasProject());
}

void TestMainWindow::projectThatCannotBeReadLeavesTheOpenOne()
{
    openSample();
    ModalScript::Box box;
    box.icon = QMessageBox::Critical;
    box.title = QStringLiteral("Error");
    box.text = QStringLiteral("Cannot read the project %1: No such file or directory")
                   .arg(path("none.json"));
    script().expectBox(box);
    QVERIFY(!m_window->openProject(path("none.json")));
    QCOMPARE(design()->project().name, QStringLiteral("demo"));
}

void TestMainWindow::listIsOpenedAsAProject()
{
    writeFile(path("a.v"), "\n");
    writeFile(path("sub/b.sv"), "\n");
    writeFile(path("lists/soc.f"), "-quiet\n../a.v\n-f more.F\n+incdir+../h\n");
    writeFile(path("lists/more.F"), "../sub/b.sv\n");
    QStringList messages;
    connect(m_log.get(), &Workbench::MessageLog::messagesAdded, this,
            [&messages](const QStringList &added) { messages += added; });
    script().expectDialog("QFileDialog", "Open", [this](QDialog *dialog) {
        dialog->findChild<QLineEdit *>("fileNameEdit")->setText(path("lists/soc.f"));
        QMetaObject::invokeMethod(dialog, "accept");
    });
    trigger("Open...");
    const TE::Project &project = design()->project();
    QCOMPARE(project.name, QStringLiteral("soc"));
    QCOMPARE(project.filePath, QString());
    QCOMPARE(project.workingDir, path("lists"));
    QCOMPARE(project.sources.size(), 2);
    QCOMPARE(project.sources.first().path, path("a.v"));
    QCOMPARE(project.sources.last().path, path("sub/b.sv"));
    QCOMPARE(design()->getSourceFileInfo().value("IncludePaths").toStringList(),
             QStringList(path("h")));
    m_log->flush();
    const QString warning = path("lists/soc.f") + ":1: the unknown argument -quiet is ignored";
    QVERIFY2(messages.contains("WARNING: " + warning), qPrintable(messages.join('\n')));

    writeFile(path("lists/more.F"), "\n../sub/none.sv\n");
    ModalScript::Box box;
    box.icon = QMessageBox::Critical;
    box.title = QStringLiteral("Error");
    box.text = path("lists/more.F") + ":2: cannot read the file " + path("sub/none.sv");
    script().expectBox(box);
    QVERIFY(!m_window->openProject(path("lists/soc.f")));
    QCOMPARE(design()->project().sources.size(), 2);
}

void TestMainWindow::pipeIsNoProject()
{
    QCOMPARE(::mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
    ModalScript::Box box;
    box.icon = QMessageBox::Critical;
    box.title = QStringLiteral("Error");
    box.text =
        QStringLiteral("Cannot read the project %1: it is a pipe or a device").arg(path("pipe"));
    script().expectDialog("QFileDialog", "Open", [this](QDialog *dialog) {
        dialog->findChild<QLineEdit *>("fileNameEdit")->setText(path("pipe"));
        QMetaObject::invokeMethod(dialog, "accept");
    });
    script().expectBox(box);
    trigger("Open...");
}

void TestMainWindow::projectMenuRaisesEvents()
{
    openSample();
    select({"a.v", "sub/b.sv"});
    trigger("Disable");
    QCOMPARE(events(), QStringList("TE.File.Change.Enable file=a.v type=2 enable=false"));
    trigger("Enable");
    QCOMPARE(events(), QStringList({"TE.File.Change.Enable file=a.v type=2 enable=true",
                                    "TE.File.Change.Enable file=sub/b.sv type=3 enable=true"}));
    QTRY_COMPARE(files()->topLevelItem(1)->checkState(0), Qt::Checked);
    QCOMPARE(files()->selectedItems().size(), 2);

    select({"a.v"});
    trigger("SystemVerilog");
    QCOMPARE(events(), QStringList("TE.File.Change.Type file=a.v type=3 previous=2"));
    trigger("Remove from Project");
    QCOMPARE(events(), QStringList("TE.File.Remove file=a.v type=3"));
    QTRY_COMPARE(files()->topLevelItemCount(), 2);
    QVERIFY(!actionIn(menu("Project"), "Selected Files")->isEnabled());

    script().expectDialog("QInputDialog", "Top Module", [](QDialog *dialog) {
        dialog->findChild<QLineEdit *>()->setText(" core ");
        dialog->accept();
    });
    trigger("Set Top Module...");
    QCOMPARE(events(), QStringList("TE.Option.Change option=TopModule"));
    QCOMPARE(design()->getOptionValue("TopModule"), QVariant("core"));
    QTRY_VERIFY(readFile(path("demo.json")).contains("\"core\""));
}

void TestMainWindow::checkBoxAndTopLineRaiseEvents()
{
    openSample();
    files()->topLevelItem(1)->setCheckState(0, Qt::Checked);
    QCOMPARE(events(), QStringList("TE.File.Change.Enable file=sub/b.sv type=3 enable=true"));
    auto *top = m_window->findChild<QLineEdit *>("topModule");
    top->setText("chip");
    QTest::keyClick(top, Qt::Key_Return);
    QCOMPARE(events(), QStringList("TE.Option.Change option=TopModule"));
    QCOMPARE(design()->getOptionValue("TopModule"), QVariant("chip"));
}

void TestMainWindow::optionsRaiseEventsForWhatChanged()
{
    openSample();
    script().expectDialog("QDialog", "Project Options", pressOk);
    trigger("Options...");
    QCOMPARE(events(), QStringList());

    script().expectDialog("QDialog", "Project Options", [](QDialog *dialog) {
        dialog->findChild<QComboBox *>("standard")->setCurrentText("1800-2017");
        dialog->findChild<QComboBox *>("vhdlStandard")->setCurrentText("1076-1993");
        dialog->findChild<QComboBox *>("tool")->setCurrentText("Synplify");
        dialog->findChild<QSpinBox *>("timeout")->setValue(7);
        dialog->findChild<QPlainTextEdit *>("includePaths")->setPlainText("inc\n\n more dirs \n");
        dialog->findChild<QPlainTextEdit *>("macros")->setPlainText("A\nB=1");
        dialog->findChild<QPlainTextEdit *>("libraryFiles")->setPlainText("lib.v");
        dialog->findChild<QPlainTextEdit *>("libraryFolders")->setPlainText("cells\n/more\n");
        dialog->findChild<QLineEdit *>("device")->setText("KX100");
        pressOk(dialog);
    });
    trigger("Options...");
    QCOMPARE(
        events(),
        QStringList(
            {"TE.Option.Change option=Macros", "TE.Option.Change option=IncludePath",
             "TE.Option.Change option=Verilog_Standard", "TE.Option.Change option=VHDL_Standard",
             "TE.Option.Change option=IncludePath", "TE.Option.Change option=Synthesize_tool",
             "TE.Option.Change option=Extraction_Timeout", "TE.Option.Change option=IncludePath",
             "TE.File.Add file=lib.v", "TE.Option.Change option=LibraryFolders",
             "TE.Option.Change option=IncludePath", "TE.Device.Change"}));
    const TE::Project &project = design()->project();
    QCOMPARE(design()->getOptionValue("IncludePath").toStringList(),
             QStringList({"inc", "more dirs"}));
    QCOMPARE(project.macros, QStringList({"A", "B=1"}));
    QCOMPARE(project.libraryFiles, QStringList(path("lib.v")));
    QCOMPARE(project.libraryFolders, QStringList({path("cells"), QStringLiteral("/more")}));
    QCOMPARE(project.device.deviceName, QStringLiteral("KX100"));
    QCOMPARE(project.device.family, QStringLiteral("KX"));
}

void TestMainWindow::vhdlFilesShowTheirLibraries()
{
    openVhdl();
    QCOMPARE(TarnTest::modelText(files()->model()),
             QStringLiteral("a.vhd | VHDL\nb.vhdl | VHDL (dsp)\nc.v | Verilog\n"));
    QCOMPARE(files()->topLevelItem(0)->toolTip(1), QStringLiteral("VHDL library: work"));
    QCOMPARE(files()->topLevelItem(1)->toolTip(1), QStringLiteral("VHDL library: dsp"));
    QCOMPARE(files()->topLevelItem(2)->toolTip(1), QString());
    const QString options = m_window->findChild<QLabel *>("options")->text();
    QVERIFY2(options.startsWith("Verilog standard: 1364-2005\nVHDL standard: 1076-1993\n"),
             qPrintable(options));
}

void TestMainWindow::libraryOfSelectedFilesIsSet()
{
    openVhdl();
    QAction *action = actionIn(menu("Project"), "Set Library...");
    select({"c.v"});
    QVERIFY(!action->isEnabled());
    select({"a.vhd", "c.v"});
    script().expectDialog("QInputDialog", "VHDL Library", [](QDialog *dialog) {
        auto *library = dialog->findChild<QComboBox *>();
        QCOMPARE(library->currentText(), QStringLiteral("work"));
        QCOMPARE(TarnTest::modelText(library->model()), QStringLiteral("work\ndsp\n"));
        library->setEditText(" Video ");
        dialog->accept();
    });
    trigger("Set Library...");
    QCOMPARE(events(), QStringList("TE.File.Modified file=a.vhd"));
    QTRY_COMPARE(files()->topLevelItem(0)->text(1), QStringLiteral("VHDL (video)"));
    QTRY_VERIFY(readFile(path("vhdl.json")).contains("\"library\": \"video\""));

    // A disabled file has a library too.
    select({"a.vhd", "b.vhdl"});
    script().expectDialog("QInputDialog", "VHDL Library", [](QDialog *dialog) {
        QCOMPARE(dialog->findChild<QComboBox *>()->currentText(), QStringLiteral("video"));
        dialog->findChild<QComboBox *>()->setCurrentText("work");
        dialog->accept();
    });
    trigger("Set Library...");
    QCOMPARE(events(),
             QStringList({"TE.File.Modified file=a.vhd", "TE.File.Modified file=b.vhdl"}));
    QTRY_COMPARE(TarnTest::modelText(files()->model()),
                 QStringLiteral("a.vhd | VHDL\nb.vhdl | VHDL\nc.v | Verilog\n"));

    script().expectDialog("QInputDialog", "VHDL Library", [](QDialog *dialog) {
        dialog->findChild<QComboBox *>()->setEditText("other");
        dialog->reject();
    });
    trigger("Set Library...");
    QCOMPARE(events(), QStringList());
}

void TestMainWindow::wrongLibraryIsRefused()
{
    openVhdl();
    select({"a.vhd"});
    script().expectDialog("QInputDialog", "VHDL Library", [](QDialog *dialog) {
        dialog->findChild<QComboBox *>()->setEditText("IEEE");
        dialog->accept();
    });
    ModalScript::Box box;
    box.icon = QMessageBox::Critical;
    box.title = QStringLiteral("Error");
    box.text = QStringLiteral("The library \"IEEE\" is reserved for the packages of the standard; "
                              "choose another name, and use it in the library clauses too.");
    script().expectBox(box);
    trigger("Set Library...");
    QCOMPARE(events(), QStringList());
}

void TestMainWindow::wrongMacroIsRefused()
{
    openSample();
    script().expectDialog("QDialog", "Project Options", [](QDialog *dialog) {
        dialog->findChild<QPlainTextEdit *>("macros")->setPlainText("1A");
        dialog->findChild<QSpinBox *>("timeout")->setValue(7);
        pressOk(dialog);
        auto *problem = dialog->findChild<QLabel *>("problem");
        QVERIFY(dialog->isVisible());
        QVERIFY(problem->isVisible());
        QCOMPARE(problem->text(), QStringLiteral("Write a macro as NAME or NAME=VALUE."));
        dialog->reject();
    });
    trigger("Options...");
    QCOMPARE(events(), QStringList());
}

void TestMainWindow::addFilesAsksForFiles()
{
    openSample();
    writeFile(path("new.vhd"), "\n");
    script().expectDialog("QFileDialog", "Add Files", [this](QDialog *dialog) {
        dialog->findChild<QLineEdit *>("fileNameEdit")
            ->setText(QStringLiteral("\"%1\" \"%2\"").arg(path("a.v"), path("new.vhd")));
        QMetaObject::invokeMethod(dialog, "accept");
    });
    trigger("Add Files...");
    QCOMPARE(events(), QStringList("TE.File.Add file=new.vhd"));
    QTRY_COMPARE(files()->topLevelItemCount(), 4);
    QCOMPARE(files()->topLevelItem(3)->text(1), QStringLiteral("VHDL"));
}

void TestMainWindow::pluginsSeeTheOpenProject()
{
    QVERIFY(!Core::ProjectManager::currentProject());
    openSample();
    QVERIFY(Core::ProjectManager::currentProject());
    Core::ProjectManager::currentProject()->addFile(path("y.tarn"));
    QCOMPARE(events(), QStringList("TE.File.Add file=y.tarn"));
    trigger("Close Project");
    QVERIFY(!Core::ProjectManager::currentProject());
    openSample();
    m_window.reset();
    QVERIFY(!Core::ProjectManager::currentProject());
    QVERIFY(!design()->hasProject());
}

void TestMainWindow::activatingAConfigurationOpensIt()
{
    QStringList opened;
    m_window->setTarnOpener([&](const QString &file, const DEV::DeviceArg &device) {
        opened.append(file + ' ' + device.deviceName);
    });
    openSample();
    for (int i = 0; i < 3; ++i)
        Q_EMIT files()->itemActivated(files()->topLevelItem(i), 0);
    QCOMPARE(opened, QStringList(path("x.tarn") + " KX70"));
}

void TestMainWindow::withoutPluginOpeningIsRefused()
{
    ModalScript::Box box;
    box.icon = QMessageBox::Critical;
    box.title = QStringLiteral("Error");
    box.text = QStringLiteral("Cannot open /x.tarn: the TARN Inserter plug-in is not loaded.");
    script().expectBox(box);
    m_window->openTarnFile("/x.tarn");
}

void TestMainWindow::openTellsProjectsFromConfigurations()
{
    QStringList opened;
    m_window->setTarnOpener(
        [&](const QString &file, const DEV::DeviceArg &) { opened.append(file); });
    writeFile(path("x.tarn"), "\n");
    for (const char *name : {"demo.json", "x.tarn"}) {
        script().expectDialog("QFileDialog", "Open", [this, name](QDialog *dialog) {
            dialog->findChild<QLineEdit *>("fileNameEdit")->setText(path(name));
            QMetaObject::invokeMethod(dialog, "accept");
        });
        trigger("Open...");
    }
    QCOMPARE(design()->project().name, QStringLiteral("demo"));
    QCOMPARE(opened, QStringList(path("x.tarn")));
}

void TestMainWindow::galleryOffersWizards()
{
    openSample();
    QStringList runs;
    QObject plugin;
    ExtSys::ObjectPool::add(new Wizard("First", &runs), &plugin);
    ExtSys::ObjectPool::add(new Wizard("Second", &runs), &plugin);
    script().expectDialog("QDialog", "New File", [](QDialog *dialog) {
        auto *list = dialog->findChild<QListWidget *>("wizards");
        auto *description = dialog->findChild<QLabel *>("description");
        QCOMPARE(TarnTest::modelText(list->model()), QStringLiteral("First\nSecond\n"));
        QCOMPARE(description->text(), QStringLiteral("About First"));
        list->setCurrentRow(1);
        QCOMPARE(description->text(), QStringLiteral("About Second"));
        pressOk(dialog);
    });
    trigger("New...");
    QCOMPARE(runs, QStringList("Second " + m_dir->path()));
    script().expectDialog("QDialog", "New File", [](QDialog *dialog) { dialog->reject(); });
    trigger("New...");
    QCOMPARE(runs.size(), 1);
    ExtSys::ObjectPool::release(&plugin);
}

void TestMainWindow::galleryWithoutWizardsSaysSo()
{
    ModalScript::Box box;
    box.icon = QMessageBox::Information;
    box.title = QStringLiteral("New File");
    box.text = QStringLiteral("No plug-in can create files.");
    script().expectBox(box);
    trigger("New...");
}

void TestMainWindow::closingAsksEveryViewAndCancelKeepsItOpen()
{
    openSample();
    QPointer<StubbornView> first(new StubbornView("first"));
    QPointer<StubbornView> second(new StubbornView("second"));
    Core::ViewManager::showView(first);
    Core::ViewManager::showView(second);
    first->agrees = true;
    QVERIFY(!m_window->close());
    QVERIFY(m_window->isVisible());
    QCOMPARE(first->asked, 1);
    QCOMPARE(second->asked, 1);
    QCOMPARE(Core::ViewManager::views(), QList<Core::IView *>({second}));
    QVERIFY(design()->hasProject());
    second->agrees = true;
    trigger("Quit");
    QVERIFY(!m_window->isVisible());
    QCOMPARE(Core::ViewManager::views(), QList<Core::IView *>());
}

void TestMainWindow::openingAProjectClosesTheViewsOfTheFormer()
{
    openSample();
    auto *view = new StubbornView("view");
    Core::ViewManager::showView(view);
    QVERIFY(!m_window->openProject(path("other.json")));
    QCOMPARE(design()->project().name, QStringLiteral("demo"));
    view->agrees = true;
    QVERIFY(m_window->openProject(path("other.json")));
    QCOMPARE(design()->project().name, QStringLiteral("other"));
    QCOMPARE(Core::ViewManager::views(), QList<Core::IView *>());
}

void TestMainWindow::closeActsOnTheActiveView()
{
    m_window->show();
    QAction *close = actionIn(menu("File"), "Close");
    QVERIFY(!Core::ViewManager::viewArea()->isVisible());
    auto *first = new StubbornView("first");
    auto *second = new StubbornView("second");
    first->agrees = second->agrees = true;
    Core::ViewManager::showView(first);
    Core::ViewManager::showView(second);
    QVERIFY(Core::ViewManager::viewArea()->isVisible());
    QVERIFY(close->isEnabled());
    close->trigger();
    QCOMPARE(Core::ViewManager::views(), QList<Core::IView *>({first}));
    close->trigger();
    QVERIFY(!close->isEnabled());
    QVERIFY(!Core::ViewManager::viewArea()->isVisible());
}

void TestMainWindow::windowTakesItsViewsAlong()
{
    const QPointer<Core::IView> view(new StubbornView("view"));
    Core::ViewManager::showView(new ViewWithActions("1"));
    Core::ViewManager::showView(view);
    m_window.reset();
    QVERIFY(!view);
    QCOMPARE(Core::ViewManager::views(), QList<Core::IView *>());
}

void TestMainWindow::editShowsTheActionsOfTheActiveView()
{
    QCOMPARE(editEntries(), QStringList("disabled"));
    auto *first = new ViewWithActions("1");
    auto *second = new ViewWithActions("2");
    auto *plain = new StubbornView("plain");
    plain->agrees = true;
    second->undo->setEnabled(false);
    Core::ViewManager::showView(first);
    QCOMPARE(editEntries(), QStringList({"Undo 1", "--", "Next 1"}));
    QCOMPARE(menu("Edit")->actions(), first->actions());
    Core::ViewManager::showView(second);
    QCOMPARE(editEntries(), QStringList({"-Undo 2", "--", "Next 2"}));
    Core::ViewManager::showView(plain);
    QCOMPARE(editEntries(), QStringList("disabled"));
    Core::ViewManager::showView(first);
    QCOMPARE(editEntries(), QStringList({"Undo 1", "--", "Next 1"}));

    // A window that comes later shows those of the view that is there.
    const MainWindow later(m_log.get());
    QCOMPARE(later.menuBar()->actions().at(1)->menu()->actions(), first->actions());

    QVERIFY(Core::ViewManager::closeAllViews());
    QCOMPARE(editEntries(), QStringList("disabled"));
}

void TestMainWindow::editFollowsActionsThatComeAndGo()
{
    auto *view = new ViewWithActions("1");
    auto *hidden = new ViewWithActions("2");
    Core::ViewManager::showView(hidden);
    Core::ViewManager::showView(view);
    QAction redo("&Redo");
    view->insertAction(view->actions().at(1), &redo);
    QCOMPARE(editEntries(), QStringList({"Undo 1", "Redo", "--", "Next 1"}));
    // Only one that is told to move moves.
    view->addAction(view->undo);
    QCOMPARE(editEntries(), QStringList({"Redo", "--", "Next 1", "Undo 1"}));
    redo.setEnabled(false);
    view->undo->setText("&Undo Typing");
    QCOMPARE(editEntries(), QStringList({"-Redo", "--", "Next 1", "Undo Typing"}));
    view->removeAction(&redo);
    delete view->next;
    hidden->addAction(&redo);
    hidden->removeAction(hidden->undo);
    QCOMPARE(editEntries(), QStringList({"--", "Undo Typing"}));

    // Nothing to choose from, and something again.
    view->undo->setVisible(false);
    QVERIFY(!menu("Edit")->menuAction()->isEnabled());
    view->undo->setVisible(true);
    QVERIFY(menu("Edit")->menuAction()->isEnabled());
    delete view->undo;
    QCOMPARE(editEntries(), QStringList({"disabled", "--"}));
    Core::ViewManager::showView(hidden);
    QCOMPARE(editEntries(), QStringList({"--", "Next 2", "-Redo"}));
}

void TestMainWindow::editForgetsADeletedView()
{
    QObject owner;
    auto *first = new ViewWithActions("1", &owner);
    auto *second = new ViewWithActions("2", &owner);
    auto *third = new ViewWithActions("3", &owner);
    for (Core::IView *view : {first, second, third})
        Core::ViewManager::showView(view);
    delete third;
    QCOMPARE(menu("Edit")->actions(), Core::ViewManager::activeView()->actions());
    QCOMPARE(menu("Edit")->actions().size(), 3);
    Core::ViewManager::showView(first);
    delete second;
    QCOMPARE(editEntries(), QStringList({"Undo 1", "--", "Next 1"}));
    delete first;
    QCOMPARE(editEntries(), QStringList("disabled"));
}

void TestMainWindow::shortcutOfAnActionInEditWorksOnce()
{
    openSample();
    auto *other = new ViewWithActions("1");
    auto *view = new ViewWithActions("2");
    Core::ViewManager::showView(other);
    Core::ViewManager::showView(view);
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    QWindow *window = m_window->windowHandle();
    view->line->setFocus();
    QTest::keyClick(window, Qt::Key_F8);
    QCOMPARE(view->ran, QList<const QAction *>({view->next}));
    view->setFocusPolicy(Qt::StrongFocus);
    view->setFocus();
    QTest::keyClick(window, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(view->ran, QList<const QAction *>({view->next, view->undo}));

    // Not while the keys go elsewhere.
    files()->setFocus();
    QTest::keyClick(window, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(view->ran.size(), 2);
    QCOMPARE(other->ran.size(), 0);

    Core::ViewManager::showView(other);
    other->line->setFocus();
    QTest::keyClick(window, Qt::Key_F8);
    QCOMPARE(view->ran.size(), 2);
    QCOMPARE(other->ran, QList<const QAction *>({other->next}));
}

void TestMainWindow::actionInEditIsTriggeredByTheKeyboard()
{
    m_window->show();
    auto *view = new ViewWithActions("1");
    Core::ViewManager::showView(view);
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    view->line->setFocus();
    QTest::keyClick(m_window->windowHandle(), Qt::Key_E, Qt::AltModifier);
    QTRY_COMPARE(QApplication::activePopupWidget(), menu("Edit"));
    QTest::keyClick(menu("Edit")->windowHandle(), Qt::Key_U);
    QCOMPARE(view->ran, QList<const QAction *>({view->undo}));
    QVERIFY(!QApplication::activePopupWidget());
}

TARN_TEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
