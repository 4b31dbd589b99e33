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

/// The design of the open project: its sources and options. Every change raises a host event of
/// te/teconstants.h, changes of source files on disk included.
class TE_EXPORT DesignManager : public QObject
{
    Q_OBJECT

public:
    DesignManager();
    ~DesignManager() override;

    /// The design information map, see te/designinfo.h for its keys. It leaves out disabled files
    /// and files that are not design sources.
    QMap<QString, QVariant> getSourceFileInfo() const;

    /// Type and enabled flag of @p file, which may be relative to the working folder. Library files
    /// and files of library folders count as enabled design sources.
    FileInfo getFileInfo(const QString &file) const;

    /// Value of the option @p name (TE::OPT), its default when the project does not set it. Invalid
    /// for an unknown name.
    QVariant getOptionValue(const QString &name) const;

    /// The project's folder, absolute; empty without a project.
    QString workingDir() const;

    // For the application:

    bool hasProject() const;
    const Project &project() const;
    /// Replaces the project as a whole; raises no event.
    void setProject(const Project &project);
    void closeProject();

    // Each of the following returns false and raises no event when nothing changes, the file is
    // unknown or the option cannot have the value.

    bool addFile(const QString &path);
    bool addFile(const QString &path, int type);
    bool removeFile(const QString &path);
    /// Removes the known files among @p paths, at the cost of removing one.
    bool removeFiles(const QStringList &paths);
    bool setFileEnabled(const QString &path, bool enabled);
    /// A file that is no VHDL file any more belongs to no library.
    bool setFileType(const QString &path, int type);
    /// Sets the library of a VHDL file, see normalizeVhdlLibrary(). Raises the event of a modified
    /// file.
    bool setFileLibrary(const QString &path, const QString &library);
    /// Raises TE::E_OPTION_CHANGE; for TE::OPT::VHDL_Standard also with TE::OPT::INCLUDEPATH.
    bool setOptionValue(const QString &name, const QVariant &value);
    /// Raises the events of added and removed files. When only the order changes, raises the event
    /// of a modified file.
    bool setLibraryFiles(const QStringList &paths);
    /// These two raise TE::E_OPTION_CHANGE twice: with TE::OPT::LIBRARYFOLDERS or MACROS, and with
    /// TE::OPT::INCLUDEPATH for views that do not know the former.
    bool setLibraryFolders(const QStringList &paths);
    bool setMacros(const QStringList &macros);
    bool setDevice(const DEV::DeviceArg &device);

Q_SIGNALS:
    /// Sources, options or device changed, or the project was replaced.
    void projectChanged();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace TE
