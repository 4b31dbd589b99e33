// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

namespace TARN {

/// What a written file survives. Only a failure of the machine is worth waiting for the disk.
enum class Durability {
    EndOfProcess,
    PowerFailure,
};

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
    bool write(const QByteArray &content, QString *error,
               Durability durability = Durability::PowerFailure);
    /// Returns 0 or an error number.
    int takePlace(Durability durability = Durability::PowerFailure);
    /// Takes the name @p place in the same folder, if there is nothing of that name yet. Returns 0
    /// or an error number, EEXIST for a name that is taken.
    int takeNewPlace(const QString &place, Durability durability);

    int handle() const { return m_file.handle(); }

private:
    Q_DISABLE_COPY(SiblingFile)

    QByteArray newPath() const;
    int placed(int code, Durability durability);

    QString m_target;
    QByteArray m_path; ///< Empty when there is no file to remove.
    QFile m_file;
};

} // namespace TARN
