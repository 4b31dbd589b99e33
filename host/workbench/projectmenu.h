// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMenu>

namespace TE {
class DesignManager;
}

namespace Workbench {

class ProjectDock;

/// The actions on the open project and on the files selected in the dock. Every entry passes the
/// change to the design manager, which raises the host's events.
class ProjectMenu : public QMenu
{
    Q_OBJECT

public:
    /// Neither is owned; both have to outlive the menu.
    ProjectMenu(TE::DesignManager *design, ProjectDock *dock, QWidget *parent = nullptr);

    /// The part of the menu that acts on the selected files; owned by this one.
    QMenu *filesMenu() const { return m_filesMenu; }

private:
    void createFilesMenu();
    void updateActions();
    void addFiles();
    void removeFiles();
    void setEnabledForSelection(bool enabled);
    void setTypeOfSelection(int type);
    void setLibraryOfSelection();
    QString askLibrary(const QString &current);
    void setTop();
    void showOptions();

    TE::DesignManager *m_design;
    ProjectDock *m_dock;
    QMenu *m_filesMenu;
    QAction *m_setLibrary;
    QList<QAction *> m_projectActions;
};

} // namespace Workbench
