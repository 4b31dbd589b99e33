// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "toolfolder.h"

#include "designsources.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>

namespace NETWEIR {
namespace Internal {

namespace {

/// The tool cuts names at blanks and takes several characters for its own.
bool isPlainName(const QString &name)
{
    for (const QChar c : name) {
        const bool plain = (c >= QLatin1Char('a') && c <= QLatin1Char('z')) ||
                           (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) ||
                           (c >= QLatin1Char('0') && c <= QLatin1Char('9')) ||
                           c == QLatin1Char('_') || c == QLatin1Char('.');
        if (!plain)
            return false;
    }
    return !name.isEmpty();
}

} // namespace

/// A source keeps its own name within a link to its folder, so that included files are found beside
/// it; one whose own name is not plain has its folder among the include folders instead.
bool ToolFolder::linkSources(const DesignSources &sources)
{
    QHash<QString, QString> links; // By source folder.
    bool ok = true;
    for (const QString &folder : sources.includePaths)
        ok = ok && linkIncludeFolder(folder);
    for (int i = 0; i < sources.files.size(); ++i) {
        const QFileInfo info(sources.files[i].path);
        const QString folder = info.absolutePath();
        QString &linked = links[folder];
        if (linked.isEmpty()) {
            linked = QStringLiteral("netweir_s%1").arg(links.size());
            ok = ok && link(folder, linked);
        }
        QString alias = linked + QLatin1Char('/') + info.fileName();
        if (!isPlainName(info.fileName())) {
            alias = QStringLiteral("netweir_f%1").arg(i);
            ok = ok && link(info.absoluteFilePath(), alias) && linkIncludeFolder(folder);
        }
        m_files.append({alias.toLatin1(), info.filePath()});
    }
    return ok;
}

bool ToolFolder::link(const QString &target, const QString &name) const
{
    return QFile::link(target, path(name));
}

bool ToolFolder::linkIncludeFolder(const QString &folder)
{
    const QString name = QStringLiteral("netweir_i%1").arg(m_folders.size());
    m_folders.append({name.toLatin1(), folder});
    return link(folder, name);
}

bool ToolFolder::write(const QString &name, const QByteArray &text) const
{
    QFile::remove(path(name));
    QFile file(path(name));
    return file.open(QIODevice::WriteOnly | QIODevice::NewOnly) &&
           file.write(text) == text.size() && file.flush();
}

} // namespace Internal
} // namespace NETWEIR
