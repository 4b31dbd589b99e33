// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "mainwindow.h"

#include "editmenu.h"
#include "gallerydialog.h"
#include "messagelog.h"
#include "messagesdock.h"
#include "projectdock.h"
#include "projectmenu.h"
#include "projectstore.h"

#include <core/actionmanager.h>
#include <core/coreconstants.h>
#include <core/ifilewizardfactory.h>
#include <core/iview.h>
#include <core/projectmanager.h>
#include <core/viewmanager.h>
#include <extsys/objectpool.h>
#include <te/designmanager.h>
#include <te/taskengine.h>

#include <QAction>
#include <QCloseEvent>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPointer>
#include <QStackedWidget>

namespace Workbench {

namespace {

TE::DesignManager *designManager()
{
    return TE::TaskEngine::instance()->designManager();
}

class OpenProject final : public Core::IProject
{
public:
    void addFile(const QString &path) override { designManager()->addFile(path); }
};

bool isTarnFile(const QString &path)
{
    return TE::fileTypeOf(path) == TE::TarnFile;
}

bool isList(const QString &path)
{
    return path.endsWith(QLatin1String(".f"), Qt::CaseInsensitive);
}

/// Reads the list of a design. All relative paths start in the folder of the list.
bool readList(const QString &path, TE::Project *project, QString *error)
{
    const QFileInfo info(path);
    QStringList warnings;
    const bool read = TE::projectFromArguments({QStringLiteral("-f"), info.absoluteFilePath()},
                                               info.absolutePath(), project, &warnings, error);
    MessageLog::warn(warnings);
    if (read)
        project->name = info.completeBaseName();
    return read;
}

} // namespace

MainWindow::MainWindow(MessageLog *log, QWidget *parent)
    : QMainWindow(parent)
    , m_store(new ProjectStore(designManager(), this))
    , m_project(std::make_unique<OpenProject>())
{
    Core::ViewManager::setDialogParent(this);
    setCentralWidget(createCentre());
    createDocks(log);
    createFileMenu();
    menuBar()->addMenu(new EditMenu(this));
    createProjectMenu();
    createViewMenu();
    connect(m_store, &ProjectStore::modifiedChanged, this, &MainWindow::updateTitle);
    connect(designManager(), &TE::DesignManager::projectChanged, this, &MainWindow::updateTitle);
    updateTitle();
    resize(1280, 720);
}

MainWindow::~MainWindow()
{
    // Views that are still open go with the centre, which cannot show anything by then.
    disconnect(Core::ViewManager::instance(), nullptr, m_centre, nullptr);
    Core::ProjectManager::setCurrentProject(nullptr);
    m_store->closeProject();
    Core::ViewManager::setDialogParent(nullptr);
}

QWidget *MainWindow::createCentre()
{
    auto *hint = new QLabel(tr("Open a project, then double-click one of its .tarn files,\n"
                               "or create one with File > New."));
    hint->setAlignment(Qt::AlignCenter);
    hint->setEnabled(false);
    m_centre = new QStackedWidget(this);
    m_centre->addWidget(hint);
    m_centre->addWidget(Core::ViewManager::viewArea());
    connect(Core::ViewManager::instance(), &Core::ViewManager::viewActiveted, m_centre,
            [this](const Core::IView *view) { m_centre->setCurrentIndex(view ? 1 : 0); });
    return m_centre;
}

void MainWindow::createDocks(MessageLog *log)
{
    m_projectDock = new ProjectDock(designManager(), this);
    addDockWidget(Qt::LeftDockWidgetArea, m_projectDock);
    connect(m_projectDock, &ProjectDock::fileActivated, this, [this](const QString &path) {
        if (designManager()->getFileInfo(path).type == TE::TarnFile)
            openTarnFile(path);
    });
    auto *messages = new MessagesDock(log, this);
    addDockWidget(Qt::BottomDockWidgetArea, messages);
    resizeDocks({m_projectDock}, {380}, Qt::Horizontal);
    resizeDocks({messages}, {120}, Qt::Vertical);
}

void MainWindow::createFileMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&File"));
    menu->setToolTipsVisible(true);
    menu->addAction(tr("&New..."), this, &MainWindow::newFile, QKeySequence::New);
    menu->addAction(tr("&Open..."), this, &MainWindow::open, QKeySequence::Open);
    menu->addSeparator();
    const QString save = QLatin1String(Core::Constants::A_FILE_SAVE);
    Core::ActionManager::setDefaultText(save, tr("&Save"));
    Core::ActionManager::setDefaultShortcut(save, QKeySequence::Save);
    menu->addAction(Core::ActionManager::command(save));
    QAction *close = menu->addAction(
        tr("&Close"), this, [] { Core::ViewManager::closeView(Core::ViewManager::activeView()); },
        QKeySequence::Close);
    close->setEnabled(false);
    connect(Core::ViewManager::instance(), &Core::ViewManager::viewActiveted, close,
            [close](const Core::IView *view) { close->setEnabled(view); });
    menu->addSeparator();
    menu->addAction(tr("&Quit"), this, &QWidget::close, QKeySequence::Quit);
}

void MainWindow::createProjectMenu()
{
    auto *menu = new ProjectMenu(designManager(), m_projectDock, this);
    QAction *first = menu->actions().first();
    const auto insert = [this, menu, first](const QString &text, auto slot) {
        auto *action = new QAction(text, menu);
        connect(action, &QAction::triggered, this, slot);
        menu->insertAction(first, action);
        return action;
    };
    insert(tr("O&pen Project..."), &MainWindow::open);
    QAction *saveAs = insert(tr("Sa&ve Project As..."), [this] { m_store->askAndSaveAs(); });
    QAction *close = insert(tr("&Close Project"), &MainWindow::closeProject);
    menu->insertSeparator(first);
    const auto update = [saveAs, close] {
        saveAs->setEnabled(designManager()->hasProject());
        close->setEnabled(designManager()->hasProject());
    };
    connect(designManager(), &TE::DesignManager::projectChanged, menu, update);
    update();
    m_projectDock->setFilesMenu(menu->filesMenu());
    menuBar()->addMenu(menu);
}

void MainWindow::createViewMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&View"));
    const QList<QDockWidget *> docks =
        findChildren<QDockWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (QDockWidget *dock : docks)
        menu->addAction(dock->toggleViewAction());
}

void MainWindow::newFile()
{
    const auto wizards = ExtSys::ObjectPool::objects<Core::IFileWizardFactory>();
    if (wizards.isEmpty()) {
        QMessageBox::information(this, tr("New File"), tr("No plug-in can create files."));
        return;
    }
    const QPointer<GalleryDialog> gallery(new GalleryDialog(wizards, this));
    Core::IFileWizardFactory *wizard = nullptr;
    if (gallery->exec() == QDialog::Accepted && gallery)
        wizard = gallery->chosenWizard();
    delete gallery;
    if (wizard)
        wizard->runWizard(this, designManager()->workingDir());
}

void MainWindow::open()
{
    const QString path = QFileDialog::getOpenFileName(
        this, tr("Open"), designManager()->workingDir(),
        tr("Projects, lists and configurations (*.json *.f *.tarn);;All files (*)"));
    if (path.isEmpty())
        return;
    if (isTarnFile(path))
        openTarnFile(path);
    else
        openProject(path);
}

bool MainWindow::openProject(const QString &path)
{
    TE::Project project;
    QString error;
    if (isList(path) ? readList(path, &project, &error) : TE::readProject(path, &project, &error))
        return showProject(project);
    QMessageBox::critical(this, tr("Error"), error);
    return false;
}

bool MainWindow::showProject(const TE::Project &project)
{
    if (!mayCloseProject())
        return false;
    m_store->setProject(project);
    Core::ProjectManager::setCurrentProject(m_project.get());
    return true;
}

void MainWindow::openTarnFile(const QString &path)
{
    if (m_openTarn)
        m_openTarn(path, designManager()->project().device);
    else
        QMessageBox::critical(this, tr("Error"),
                              tr("Cannot open %1: the TARN Inserter plug-in is not loaded.")
                                  .arg(QDir::toNativeSeparators(path)));
}

void MainWindow::closeProject()
{
    if (!mayCloseProject())
        return;
    Core::ProjectManager::setCurrentProject(nullptr);
    m_store->closeProject();
}

/// Closes the views first: saving one may need the project.
bool MainWindow::mayCloseProject()
{
    return Core::ViewManager::closeAllViews() && m_store->mayClose();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    event->setAccepted(mayCloseProject());
}

void MainWindow::updateTitle()
{
    const QString name = designManager()->project().name;
    setWindowTitle((name.isEmpty() ? QString() : name + QLatin1String("[*] - ")) +
                   tr("TARN Workbench"));
    setWindowModified(m_store->isModified());
}

} // namespace Workbench
