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

/// Keeps the project of the design manager and its file in step.
///
/// Every change is saved as soon as control returns to the event loop. A project without a file, or
/// one whose file could not be saved, stays modified until saveAs(), or until the user discards the
/// changes in mayClose().
class ProjectStore : public QObject
{
    Q_OBJECT

public:
    /// @p design is not owned.
    explicit ProjectStore(TE::DesignManager *design, QObject *parent = nullptr);

    bool isModified() const { return m_modified; }

    /// Makes @p project, just read or built, the current one. Unsaved changes of the former project
    /// are lost, see mayClose().
    void setProject(const TE::Project &project);
    void closeProject();

    /// Saves the project to @p path, which is its file from then on. Include paths keep naming the
    /// same folders. When the project cannot be saved, tells the user why and returns false.
    bool saveAs(const QString &path);
    /// Asks the user for the path first. False also when the user cancels.
    bool askAndSaveAs();

    /// Saves unsaved changes; when that fails, asks the user. False when the project has to stay
    /// open.
    bool mayClose();

Q_SIGNALS:
    void modifiedChanged(bool modified);

private:
    void onProjectChanged();
    bool save();
    bool write(const TE::Project &project);
    bool mayOverwrite();
    void setModified(bool modified);

    TE::DesignManager *m_design;
    QByteArray m_content; ///< Content of the file as last read or written here.
    QTimer m_timer;
    bool m_modified = false;
    bool m_isReplacing = false; ///< A change of the project is not one by the user.
    bool m_failed = false;      ///< Saving failed: no further attempt without the user.
};

} // namespace Workbench
