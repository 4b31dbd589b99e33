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
    bool library = false; ///< Its modules count only where the sources define none of that name.
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

} // namespace NETWEIR::Internal
