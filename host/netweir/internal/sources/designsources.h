// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArrayList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

namespace NETWEIR::Internal {

/// One source of the design.
struct SourceFile
{
    QString path;
    bool systemVerilog = false;
    bool vhdl = false;
    bool library = false; ///< Its modules stand in for missing ones only.
};

/// What the design information map says, in the types of the extractor.
struct DesignSources
{
    /// Whether one of the macros, each "NAME" or "NAME=VALUE", is @p macro.
    bool defines(const QString &macro) const;

    QString top;
    QVector<SourceFile> files; ///< Sources in project order, then library files.
    /// Folders that have a file for each module of a library, in search order.
    QStringList libraryFolders;
    QStringList libraryExtensions; ///< Of these files, with the dot, in search order.
    QStringList includePaths;
    QStringList macros;
    QString standard; ///< Language of the Verilog files; never empty.
    int timeoutSeconds = 120;
};

/// Whether file @p index is read by the rules of SystemVerilog: by its type or by the standard.
bool isSystemVerilog(const DesignSources &sources, int index);

/// How to have a file read as SystemVerilog.
QString typeAdvice();

/// Reads the map whose keys te/designinfo.h names. Files that are no design sources are left out.
DesignSources readDesignSources(const QMap<QString, QVariant> &info);

/// Adds the files that the library folders of @p sources have for modules and packages of these
/// @p names, in their order. Files that are known already do not count. Returns how many were
/// added.
int addFilesOfLibraryFolders(const QByteArrayList &names, DesignSources *sources);

/// Defined by the elaborator itself.
constexpr char ToolMacro[] = "VERILATOR";

/// What the sources mention and the extraction acts on.
struct SourceWords
{
    bool hidesCode = false; ///< Comments that hide code from synthesis.
    bool namesTool = false; ///< The macro by which sources know that this tool reads them.
};

/// Looks for what would make the elaborator hang or fail without a reason: missing, unreadable,
/// empty and binary files, folders, lines over 1 MB, VHDL; included files too, as far as their
/// names stand in the text. One message a finding. Reads each file once; @p words, if given, learns
/// what they mention.
QStringList checkSources(const DesignSources &sources, SourceWords *words = nullptr);

} // namespace NETWEIR::Internal
