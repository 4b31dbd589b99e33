// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <te/project.h>

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTimer>

namespace TE {
class DesignManager;
}

namespace Workbench {

/// Keeps the project of the design manager and its file alike.
///
/// Every change is saved as soon as control returns to the event loop. A project without a file,
/// or one whose file could not be saved, stays modified until saveAs() or until the user gives it
/// up in mayClose().
class ProjectStore : public QObject
{
    Q_OBJECT

public:
    /// @p design is not owned.
    explicit ProjectStore(TE::DesignManager *design, QObject *parent = nullptr);

    bool isModified() const { return m_modified; }

    /// Makes @p project, just read or built, the current one; unsaved changes of the former one are
    /// lost, see mayClose().
    void setProject(const TE::Project &project);
    void closeProject();

    /// Saves the project as @p path, which is its file from then on. Include paths stay the same
    /// folders. False when the project could not be saved; the user knows why.
    bool saveAs(const QString &path);
    /// The same with a path that the user chooses; false too when the user does not.
    bool askAndSaveAs();

    /// Saves what is not saved and, failing that, asks the user. False to stay with the project.
    bool mayClose();

Q_SIGNALS:
    void modifiedChanged(bool modified);

private:
    void onProjectChanged();
    bool save();
    bool mayOverwrite();
    void setModified(bool modified);

    TE::DesignManager *m_design;
    QByteArray m_content; ///< Of the file as last read or written here.
    QTimer m_timer;
    bool m_modified = false;
    bool m_following = true; ///< Whether a change of the project is a change by the user.
    bool m_failed = false;   ///< Saving failed: no further attempt without the user.
};

} // namespace Workbench
