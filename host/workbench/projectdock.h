// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDockWidget>
#include <QStringList>
#include <QTimer>

class QLabel;
class QLineEdit;
class QMenu;
class QTreeWidget;
class QTreeWidgetItem;

namespace TE {
class DesignManager;
struct Project;
} // namespace TE

namespace Workbench {

/// Shows the project: its files with type, VHDL library and enabled flag, its top module and its
/// options.
///
/// Follows the design manager. Several changes in a row cost one update, whose time is linear in
/// the number of files.
class ProjectDock : public QDockWidget
{
    Q_OBJECT

public:
    /// @p design is not owned.
    explicit ProjectDock(TE::DesignManager *design, QWidget *parent = nullptr);

    /// Absolute paths of the selected files.
    QStringList selectedFiles() const;

    /// The menu to show for the files; not owned.
    void setFilesMenu(QMenu *menu);

Q_SIGNALS:
    void selectionChanged();
    /// The user wants to open the file at @p path.
    void fileActivated(const QString &path);

private:
    void createFiles();
    void update();
    void updateFiles(const TE::Project &project);
    void updateOptions();
    void onItemChanged(QTreeWidgetItem *item, int column);
    void onTopEdited();

    TE::DesignManager *m_design;
    QTreeWidget *m_files;
    QLineEdit *m_top;
    QLabel *m_options;
    QTimer m_timer;
};

} // namespace Workbench
