// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "te_global.h"

#include <te/fileinfo.h>
#include <te/project.h>

#include <QMap>
#include <QObject>
#include <QString>
#include <QVariant>

#include <memory>

namespace TE {

/// The design of the open project: its sources and options. Raises the host events of
/// te/teconstants.h on every change, changes of source files on disk included.
class TE_EXPORT DesignManager : public QObject
{
    Q_OBJECT

public:
    DesignManager();
    ~DesignManager() override;

    /// The design information map; keys in te/designinfo.h. Disabled files and files that are no
    /// design source are not in it.
    QMap<QString, QVariant> getSourceFileInfo() const;

    /// Type and enabled flag of @p file, which may be relative to the working folder. A library
    /// file, also one in a library folder, counts as an enabled design source.
    FileInfo getFileInfo(const QString &file) const;

    /// Value of the option @p name (TE::OPT), its default when the project does not set it, an
    /// invalid variant for an unknown name.
    QVariant getOptionValue(const QString &name) const;

    /// The project's folder, absolute; empty without a project.
    QString workingDir() const;

    // For the application:

    bool hasProject() const;
    const Project &project() const;
    /// Replaces the project as a whole; raises no event.
    void setProject(const Project &project);
    void closeProject();

    /// Each returns false, and raises nothing, when nothing changes, the file is not known or the
    /// option cannot hold the value.
    bool addFile(const QString &path);
    bool addFile(const QString &path, int type);
    bool removeFile(const QString &path);
    /// Removes every one of @p paths that is known, at the cost of removing one.
    bool removeFiles(const QStringList &paths);
    bool setFileEnabled(const QString &path, bool enabled);
    bool setFileType(const QString &path, int type);
    bool setOptionValue(const QString &name, const QVariant &value);
    /// Raises the events of added and removed files; when only the order changes, that of a
    /// modified one.
    bool setLibraryFiles(const QStringList &paths);
    /// These two raise TE::E_OPTION_CHANGE with TE::OPT::LIBRARYFOLDERS or MACROS and, for views
    /// that do not know those, with TE::OPT::INCLUDEPATH.
    bool setLibraryFolders(const QStringList &paths);
    bool setMacros(const QStringList &macros);
    bool setDevice(const DEV::DeviceArg &device);

Q_SIGNALS:
    /// Sources, options or device changed, or another project was set.
    void projectChanged();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace TE
