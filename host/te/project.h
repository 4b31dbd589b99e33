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

/// The library of VHDL files for which the user names none.
constexpr char DefaultVhdlLibrary[] = "work";

/// One file of a project.
struct ProjectSource
{
    QString path; ///< Absolute.
    int type = UnknownFile;
    bool enabled = true;
    /// Of a VHDL file: the library that its units belong to, as normalizeVhdlLibrary() leaves it.
    QString library = QLatin1String(DefaultVhdlLibrary);
};

/// A project as plain data. The working folder is the folder of the project file. Without a file it
/// is the folder in which the application was started, or the folder of the list that was opened.
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
    QStringList libraryExtensions; ///< Of the files in these folders; see libraryExtensionsOf().
    QStringList macros;            ///< "NAME" or "NAME=VALUE".
    DEV::DeviceArg device;
};

/// The extensions, with the dot, of files in the library folders of @p project, in search order:
/// ".v" and ".sv" unless the project sets others. Never empty.
TE_EXPORT QStringList libraryExtensionsOf(const Project &project);

/// @p path, cleaned, in the working folder of @p project unless it is absolute.
TE_EXPORT QString absolutePathIn(const Project &project, const QString &path);

/// Value of the option @p name (TE::OPT), its default when the project does not set it. Invalid for
/// an unknown name.
TE_EXPORT QVariant optionValueOf(const Project &project, const QString &name);

/// The design information map of @p project, see te/designinfo.h for its keys. It leaves out
/// disabled files and files that are not design sources.
TE_EXPORT QMap<QString, QVariant> designInfoOf(const Project &project);

/// FileType for the extension of @p path: .v .vh, .sv .svh, .vhd .vhdl, .tarn, .sdc .pdc.
TE_EXPORT int fileTypeOf(const QString &path);

/// The name of @p type in project files, "Other" for UnknownFile.
TE_EXPORT QString fileTypeName(int type);
/// Every name that fileTypeName() returns, by type.
TE_EXPORT QStringList fileTypeNames();
/// The FileType with the name @p name, -1 when there is none.
TE_EXPORT int fileTypeFromName(const QString &name);

/// Converts the name of a VHDL library to lower case: names in VHDL are not case-sensitive. Returns
/// false, sets @p error (may be null) and leaves @p name unchanged when files of a project cannot
/// belong to a library of that name.
TE_EXPORT bool normalizeVhdlLibrary(QString *name, QString *error);

/// Reads a project file (JSON). On failure returns false, sets @p error to what is wrong and where,
/// and leaves @p project unchanged.
TE_EXPORT bool readProject(const QString &path, Project *project, QString *error);

/// Whether the file at @p path is meant as a project file, perhaps with mistakes: a JSON object
/// with a number as "version" and with "sources", or with no key that project files do not have.
/// Other JSON files are common beside sources.
TE_EXPORT bool isProjectFile(const QString &path);

/// The project files in @p folder, by name. The names of its other JSON files go to @p others,
/// which may be null.
TE_EXPORT QStringList projectFilesIn(const QString &folder, QStringList *others);

/// Writes @p project to its filePath, replacing the file atomically. Paths below the project's
/// folder are stored relative to it.
TE_EXPORT bool writeProject(const Project &project, QString *error);

/// Builds a project without a file from command-line arguments in the form that is common to
/// Verilog tools: source files, `-f FILE`, `-F FILE`, `-I DIR`, `+incdir+DIR+...`,
/// `-DNAME[=VALUE]`,
/// `+define+NAME[=VALUE]+...`, `-v FILE`, `-y DIR`, `+libext+EXT+...`, `--top NAME`, `-sv`,
/// `--language LANGUAGE`, and for VHDL `--work LIBRARY`, `--std EDITION`, `-93`, `-2008`.
///
/// A `-f` or `-F` file is a list of further arguments, see TE::splitArguments(). Relative paths
/// start in @p workingDir; in a list read with `-F` they start in the folder of the list. A list
/// within a list follows its own option. A name with `*`, `?` or `[...]` stands for all matching
/// files of its folder, in alphabetical order. A file without a known extension is read as Verilog;
/// a repeated file counts once. `-sv` and `--language` set the standard of all Verilog files,
/// regardless of their position; the last one counts. The same holds for `--std` and VHDL files.
///
/// `--work` sets the library of the VHDL sources behind it, up to the next `--work` or the end of
/// the list that contains it. A list begins with the library that holds where it is named.
///
/// Lists are often written for tools with more arguments. An unknown argument in a list is ignored,
/// with its place in @p warnings. The word behind it on the same line is ignored too, as its value,
/// unless it is an argument or looks like a design source. A variable that is not set is an error,
/// except in a macro, where it stays as written: `$clog2` looks the same.
///
/// Returns false and sets @p error, with the list and the line, for an incomplete argument, an
/// unknown one among @p arguments, or a file that cannot be read.
TE_EXPORT bool projectFromArguments(const QStringList &arguments, const QString &workingDir,
                                    Project *project, QStringList *warnings, QString *error);

/// What a file that a user names is, by its extension.
enum class NamedFile {
    Source,  ///< An argument of projectFromArguments().
    Project, ///< ".json"
    Config,  ///< ".tarn"
};
TE_EXPORT NamedFile namedFileOf(const QString &path);

/// Whether @p argument, one of those of projectFromArguments(), has its value in the next argument.
TE_EXPORT bool takesNextArgument(const QString &argument);

/// Whether @p argument is one of those of projectFromArguments() that are not files.
TE_EXPORT bool isDesignOption(const QString &argument);

} // namespace TE
