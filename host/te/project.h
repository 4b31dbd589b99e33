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
    /// Absolute folders that are searched, in this order, for a file named like a module that no
    /// file defines.
    QStringList libraryFolders;
    QStringList libraryExtensions; ///< Of the files in them; see libraryExtensionsOf().
    QStringList macros;            ///< "NAME" or "NAME=VALUE".
    DEV::DeviceArg device;
};

/// The extensions, dot included, that files of library folders have in @p project: ".v" and ".sv"
/// unless it has its own. In search order, never empty.
TE_EXPORT QStringList libraryExtensionsOf(const Project &project);

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
/// share: source files, `-f FILE`, `-F FILE`, `-I DIR`, `+incdir+DIR+...`, `-DNAME[=VALUE]`,
/// `+define+NAME[=VALUE]+...`, `-v FILE`, `-y DIR`, `+libext+EXT+...`, `--top NAME`, `-sv`,
/// `--language LANGUAGE`.
///
/// A `-f` or `-F` file holds further arguments, see TE::splitArguments(). Relative paths start in
/// @p workingDir, in a `-F` file in its own folder; lists within a list have their own say. A name
/// with `*`, `?` or `[...]` stands for all files of its folder that match, in alphabetical order. A
/// file without a known extension is read as Verilog, a repeated one counts once. `-sv` and
/// `--language` choose the standard of all Verilog files, wherever they stand; the last one counts.
///
/// Lists are written for tools with more arguments. In a list an unknown one is left out, with its
/// place in @p warnings; so is what follows on its line, as its value, unless that is an argument
/// or named like a design source. In a macro a variable that is not set stays as it is written, as
/// `$clog2` does; everywhere else it is an error.
///
/// Returns false and sets @p error, with the list and its line, for an incomplete argument, for an
/// unknown one among @p arguments, and for a file that cannot be read.
TE_EXPORT bool projectFromArguments(const QStringList &arguments, const QString &workingDir,
                                    Project *project, QStringList *warnings, QString *error);

/// Whether @p argument, of those that projectFromArguments() takes, has its value in the next one.
TE_EXPORT bool takesNextArgument(const QString &argument);

} // namespace TE
