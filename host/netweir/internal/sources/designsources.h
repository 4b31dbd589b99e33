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
    bool library = false; ///< A module counts only if no source defines one with its name.
    /// Of a VHDL file: the library that its units belong to, in lower case.
    QString vhdlLibrary = QStringLiteral("work");
};

/// The content of the design information map, in the types of the extractor.
struct DesignSources
{
    /// Whether one of the macros, each "NAME" or "NAME=VALUE", is @p macro.
    bool defines(const QString &macro) const;

    /// Only what is for VHDL, or only what is for Verilog and SystemVerilog.
    DesignSources inLanguage(bool vhdl) const;

    QString top;
    QVector<SourceFile> files; ///< Sources in project order, then library files.
    /// Library folders with one file per module, in search order.
    QStringList libraryFolders;
    QStringList libraryExtensions; ///< Extensions of these files, with the dot, in search order.
    QStringList includePaths;
    QStringList macros;
    QString standard; ///< Language of the Verilog files; never empty.
    /// Edition of VHDL, for all VHDL files: "93" or "08".
    QString vhdlStandard = QStringLiteral("08");
    int timeoutSeconds = 120;
};

/// Whether file @p index is read by the rules of SystemVerilog: by its type or by the standard.
bool isSystemVerilog(const DesignSources &sources, int index);

/// Advice on how to read a file as SystemVerilog.
QString typeAdvice();

/// Advice on how to add the files of the VHDL library @p library, which is missing.
QString libraryAdvice(const QString &library);

/// Reads the map, whose keys are in te/designinfo.h. Ignores files that are not design sources.
DesignSources readDesignSources(const QMap<QString, QVariant> &info);

/// Adds the files in the library folders of @p sources for the modules and packages @p names, in
/// this order, unless they are known already. Returns the number of added files.
int addFilesOfLibraryFolders(const QByteArrayList &names, DesignSources *sources);

} // namespace NETWEIR::Internal
