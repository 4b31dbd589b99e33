// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "sourcelinks.h"

#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/tool/workfolder.h>

#include <QFileInfo>
#include <QHash>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

bool isPlainCharacter(QChar c)
{
    return (c >= QLatin1Char('a') && c <= QLatin1Char('z')) ||
           (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) ||
           (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('_') ||
           c == QLatin1Char('.');
}

bool isPlainName(const QString &name)
{
    return !name.isEmpty() && std::all_of(name.begin(), name.end(), isPlainCharacter);
}

} // namespace

/// A source keeps its name below a link to its folder, so the tool finds included files beside it.
/// If the name is not plain, the source gets a link of its own, and its folder becomes an include
/// folder.
bool SourceLinks::make(const DesignSources &sources, const WorkFolder &folder, QString *error)
{
    for (const QString &path : sources.includePaths) {
        if (!linkIncludeFolder(path, folder, error))
            return false;
    }
    QHash<QString, QString> links; // Links by source folder.
    for (int i = 0; i < sources.files.size(); ++i) {
        const QFileInfo info(sources.files[i].path);
        const QString source = info.absolutePath();
        QString &linked = links[source];
        if (linked.isEmpty()) {
            linked = QStringLiteral("netweir_s%1").arg(links.size());
            if (!folder.link(source, linked, error))
                return false;
        }
        QString alias = linked + QLatin1Char('/') + info.fileName();
        if (!isPlainName(info.fileName())) {
            alias = QStringLiteral("netweir_f%1").arg(i);
            if (!folder.link(info.absoluteFilePath(), alias, error) ||
                !linkIncludeFolder(source, folder, error))
                return false;
        }
        m_files.append({alias.toLatin1(), info.filePath()});
    }
    return true;
}

bool SourceLinks::linkIncludeFolder(const QString &path, const WorkFolder &folder, QString *error)
{
    const QString name = QStringLiteral("netweir_i%1").arg(m_folders.size());
    m_folders.append({name.toLatin1(), path});
    return folder.link(path, name, error);
}

} // namespace NETWEIR::Internal
