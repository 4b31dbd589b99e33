// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

namespace TARN {

/// Waits until the open file is on the disk; file systems that cannot tell count as done.
bool syncFile(const QFileDevice &file, QString *error);

/// A new file in the folder of another one, whose place it takes in one step once it is written.
/// Until then it has a name of its own and is removed with this object.
class SiblingFile
{
public:
    explicit SiblingFile(const QString &target);
    ~SiblingFile();

    /// Creates the file with @p mode less the umask of the process. Returns 0 or an error number.
    int create(unsigned mode);
    /// Writes @p content, down to the disk.
    bool write(const QByteArray &content, QString *error);
    /// Returns 0 or an error number.
    int takePlace();

    int handle() const { return m_file.handle(); }

private:
    Q_DISABLE_COPY(SiblingFile)

    QByteArray newPath() const;

    QString m_target;
    QByteArray m_path; ///< Empty when there is no file to remove.
    QFile m_file;
};

} // namespace TARN
