// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/modules/designscan.h>
#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/sources/preprocessedtext.h>

#include <QByteArray>
#include <QStringList>
#include <QVector>

namespace TarnTest {

/// A design as the scan sees it, without files and processes.
class ScannedDesign
{
public:
    /// Files with these names and texts below "/src/". Those below "/src/lib/" are library files.
    struct File
    {
        QString name;
        QByteArray text;
    };

    explicit ScannedDesign(const QVector<File> &files, const QString &top = QString())
        : sources(sourcesOf(files, top))
        , text(outputOf(files), aliasesOf(files), {})
        , scan(sources, text)
    {
    }

    /// One file, "/src/a.v".
    explicit ScannedDesign(const QByteArray &content, const QString &top = QString())
        : ScannedDesign({{QStringLiteral("a.v"), content}}, top)
    {
    }

    const NETWEIR::Internal::DesignSources sources;
    const NETWEIR::Internal::PreprocessedText text;
    const NETWEIR::Internal::DesignScan scan;

private:
    static NETWEIR::Internal::DesignSources sourcesOf(const QVector<File> &files,
                                                      const QString &top)
    {
        NETWEIR::Internal::DesignSources result;
        result.top = top;
        result.standard = QStringLiteral("1364-2005");
        for (const File &file : files) {
            NETWEIR::Internal::SourceFile source;
            source.path = QStringLiteral("/src/") + file.name;
            source.systemVerilog = file.name.endsWith(QLatin1String(".sv"));
            source.library = file.name.startsWith(QLatin1String("lib/"));
            result.files.append(source);
        }
        return result;
    }

    static QByteArray aliasOf(int file) { return "f" + QByteArray::number(file); }

    static QByteArray outputOf(const QVector<File> &files)
    {
        QByteArray result;
        for (int i = 0; i < files.size(); ++i)
            result += "`line 1 \"" + aliasOf(i) + "\" 1\n" + files[i].text + '\n';
        return result;
    }

    static QVector<NETWEIR::Internal::PathAlias> aliasesOf(const QVector<File> &files)
    {
        QVector<NETWEIR::Internal::PathAlias> result;
        for (int i = 0; i < files.size(); ++i)
            result.append({aliasOf(i), QStringLiteral("/src/") + files[i].name});
        return result;
    }
};

} // namespace TarnTest
