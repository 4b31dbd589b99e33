// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <files/temporarypath.h>

#include <QDir>
#include <QTemporaryDir>

namespace NETWEIR::Internal {

/// The private folder in which a tool works. Removed with this object.
///
/// Errors are sentences for users, which say what to do.
class WorkFolder
{
public:
    QString path() const { return m_folder.path(); }
    QString path(const QString &name) const { return QDir(path()).filePath(name); }

    /// Why the folder could not be made, or why nothing more can be written into it now; null when
    /// all is well. Looks by writing: file systems count their room in ways of their own. A tool
    /// need not notice that its output was cut off.
    QString problem() const;

    /// Writes a new file, whatever a tool has left under that name. It may have left a pipe, which
    /// would wait for its reader.
    bool write(const QString &name, const QByteArray &content, QString *error) const;

    bool link(const QString &target, const QString &name, QString *error) const;

private:
    QString causeOf(const QString &failure) const;

    QTemporaryDir m_folder{Files::temporaryTemplate()};
};

} // namespace NETWEIR::Internal
