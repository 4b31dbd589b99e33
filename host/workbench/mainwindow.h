// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <dev/devicearg.h>

#include <QMainWindow>

#include <functional>
#include <memory>

class QStackedWidget;

namespace Core {
class IProject;
class IView;
} // namespace Core

namespace TE {
struct Project;
}

namespace Workbench {

class MessageLog;
class ProjectDock;
class ProjectMenu;
class ProjectStore;

/// The application's window: project and messages in docks, the views in the middle.
///
/// One object per process: it is the parent of the host's dialogs.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    using TarnOpener = std::function<void(const QString &path, const DEV::DeviceArg &device)>;

    /// @p log has to outlive the window.
    explicit MainWindow(MessageLog *log, QWidget *parent = nullptr);
    ~MainWindow() override;

    /// The function that opens configuration files. Without one, opening a file is refused.
    void setTarnOpener(const TarnOpener &opener) { m_openTarn = opener; }

    /// Closes the open project, which may ask the user, and opens the project file at @p path or
    /// the list (.f), which gives a project without a file. False when the user refuses, or when
    /// the file cannot be read, which a message box says.
    bool openProject(const QString &path);
    /// The same for a project that is already read.
    bool showProject(const TE::Project &project);
    void openTarnFile(const QString &path);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void createDocks(MessageLog *log);
    void createFileMenu();
    void createProjectMenu();
    void createViewMenu();
    QWidget *createCentre();
    void newFile();
    void open();
    void closeProject();
    bool mayCloseProject();
    void updateTitle();

    ProjectStore *m_store;
    ProjectDock *m_projectDock = nullptr;
    QStackedWidget *m_centre = nullptr;
    std::unique_ptr<Core::IProject> m_project; ///< What plug-ins see of the open project.
    TarnOpener m_openTarn;
};

} // namespace Workbench
