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

/// The name of @p type in project files, "Other" for UnknownFile.
TE_EXPORT QString fileTypeName(int type);
/// Every name that fileTypeName() returns, by type.
TE_EXPORT QStringList fileTypeNames();
/// The FileType called @p name, -1 for none.
TE_EXPORT int fileTypeFromName(const QString &name);

/// Reads a project file (JSON). On failure returns false and sets @p error to what is wrong and
/// where; @p project is then unchanged.
TE_EXPORT bool readProject(const QString &path, Project *project, QString *error);

/// Writes @p project to its filePath, replacing the file atomically. Paths below the project's
/// folder are stored relative to it.
TE_EXPORT bool writeProject(const Project &project, QString *error);

/// Builds a project without a file from command-line arguments in the form that Verilog tools
/// share: source files, `-f FILE`, `-I DIR`, `-IDIR`, `+incdir+DIR+...`, `-DNAME[=VALUE]`,
/// `+define+NAME[=VALUE]+...`, `-v FILE`, `--top NAME`.
///
/// A `-f` file holds further arguments, divided by white space, with comments (`//` and `#` to the
/// end of the line, `/* */`), quotes and backslash escapes; its paths are relative to
/// @p workingDir. A file without a known extension is read as Verilog, a repeated one counts once.
/// Returns false and sets @p error for an unknown or incomplete argument and for a file that
/// cannot be read.
TE_EXPORT bool projectFromArguments(const QStringList &arguments, const QString &workingDir,
                                    Project *project, QString *error);

} // namespace TE
