// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "te_global.h"

#include <dev/devicearg.h>
#include <te/fileinfo.h>

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace TE {

/// One file of a project.
struct ProjectSource
{
    QString path; ///< Absolute.
    int type = UnknownFile;
    bool enabled = true;
};

/// A project as plain data. The working folder is that of the project file; without a file it is
/// the folder in which the application was started.
struct Project
{
    QString filePath;   ///< Absolute path of the project file, empty when there is none.
    QString name;       ///< Shown to the user; base name of the results.
    QString workingDir; ///< Absolute.
    QList<ProjectSource> sources;
    QMap<QString, QVariant> options; ///< By the names in TE::OPT.
    QStringList libraryFiles;        ///< Absolute paths.
    QStringList macros;              ///< "NAME" or "NAME=VALUE".
    DEV::DeviceArg device;
};

/// FileType that the extension of @p path stands for: .v .vh, .sv .svh, .vhd .vhdl, .tarn, .sdc
/// .pdc.
TE_EXPORT int fileTypeOf(const QString &path);

/// Reads a project file (JSON). On failure returns false and sets @p error to what is wrong and
/// where; @p project is then unchanged.
TE_EXPORT bool readProject(const QString &path, Project *project, QString *error);

/// Writes @p project to its filePath, replacing the file atomically. Paths below the project's
/// folder are stored relative to it.
TE_EXPORT bool writeProject(const Project &project, QString *error);

/// Builds a project without a file from command-line arguments in the form that Verilog tools
/// share: source files, `-f FILE`, `-I DIR`, `-IDIR`, `+incdir+DIR+...`, `-DNAME[=VALUE]`,
/// `+define+NAME[=VALUE]+...`, `-v FILE`, `--top NAME`. Entries of a `-f` file may hold comments
/// and are relative to @p workingDir. Returns false and sets @p error for an unknown argument or
/// an unreadable file.
TE_EXPORT bool projectFromArguments(const QStringList &arguments, const QString &workingDir,
                                    Project *project, QString *error);

} // namespace TE
