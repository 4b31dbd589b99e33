// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <files/temporarypath.h>

#include <QDir>
#include <QTemporaryDir>

namespace NETWEIR::Internal {

/// The private working folder of a tool. Removed with this object.
///
/// Errors are messages for users that say what to do.
class WorkFolder
{
public:
    QString path() const { return m_folder.path(); }
    QString path(const QString &name) const { return QDir(path()).filePath(name); }

    /// Why the folder could not be created or cannot be written any more; null when it can. Tests
    /// it by writing, because file systems report free space in different ways, and a tool may not
    /// notice that its output is cut off.
    QString problem() const;

    /// Writes a new file in place of anything that a tool has left with that name: writing to a
    /// pipe would wait for its reader.
    bool write(const QString &name, const QByteArray &content, QString *error) const;

    /// Puts a file in place of another one in one step. False when that fails.
    bool rename(const QString &name, const QString &newName) const;

    /// Makes a named pipe. False when the file system has none.
    bool makePipe(const QString &name) const;

    bool link(const QString &target, const QString &name, QString *error) const;

private:
    QString causeOf(const QString &failure) const;

    QTemporaryDir m_folder{Files::temporaryTemplate()};
};

} // namespace NETWEIR::Internal
