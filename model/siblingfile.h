// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

namespace TARN {

/// Waits until the open file is on the disk; file systems that cannot tell count as done.
bool syncFile(const QFileDevice &file, QString *error);

/// What the system says about an error number.
QString systemError(int code);

/// A new file with a name of its own in the folder of another, whose place it takes in one step
/// once it is written. Goes with this object unless it did so.
class SiblingFile
{
public:
    explicit SiblingFile(const QString &target);
    ~SiblingFile();

    /// Creates the file with @p mode, less what the process masks out. Returns 0 or an error
    /// number.
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
