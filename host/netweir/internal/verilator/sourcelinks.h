// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/sources/preprocessedtext.h>

#include <QVector>

namespace NETWEIR::Internal {

class WorkFolder;
struct DesignSources;

/// Links in the work folder to all sources and include folders. Their names are plain, because the
/// tool cuts names at blanks and some characters are special for it.
class SourceLinks
{
public:
    /// False when a link cannot be created; @p error then says why.
    bool make(const DesignSources &sources, const WorkFolder &folder, QString *error);

    /// The sources in project order and the include folders in search order.
    const QVector<PathAlias> &files() const { return m_files; }
    const QVector<PathAlias> &folders() const { return m_folders; }

private:
    bool linkIncludeFolder(const QString &path, const WorkFolder &folder, QString *error);

    QVector<PathAlias> m_files;
    QVector<PathAlias> m_folders;
};

} // namespace NETWEIR::Internal
