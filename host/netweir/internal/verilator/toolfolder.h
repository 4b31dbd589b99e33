// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <files/temporarypath.h>
#include <netweir/internal/sources/preprocessedtext.h>

#include <QDir>
#include <QTemporaryDir>
#include <QVector>

namespace NETWEIR::Internal {

struct DesignSources;

/// The private folder in which the tool works, with links to all that it reads. The names in it are
/// plain: the tool cuts names at blanks and takes several characters for its own. Removed with this
/// object.
class ToolFolder
{
public:
    /// Why the folder could not be made, or why nothing more can be written into it now; null when
    /// all is well. Looks by writing: file systems count their room in ways of their own. A tool
    /// need not notice that its output was cut off.
    QString problem() const;

    /// The message after something could not be written.
    QString writeError() const;

    QString path() const { return m_folder.path(); }
    QString path(const QString &name) const { return QDir(path()).filePath(name); }

    /// Gives every source and include folder a plain name here.
    bool linkSources(const DesignSources &sources);

    /// The sources in their order, and the include folders.
    const QVector<PathAlias> &files() const { return m_files; }
    const QVector<PathAlias> &folders() const { return m_folders; }

    /// Never into what the tool has left under that name, which may be a pipe.
    bool write(const QString &name, const QByteArray &text) const;

private:
    bool link(const QString &target, const QString &name) const;
    bool linkIncludeFolder(const QString &folder);

    QTemporaryDir m_folder{Files::temporaryTemplate()};
    QVector<PathAlias> m_files;
    QVector<PathAlias> m_folders;
    mutable QString m_lastReason; ///< Of a link or a file that could not be written.
};

} // namespace NETWEIR::Internal
