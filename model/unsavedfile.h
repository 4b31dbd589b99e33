// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "siblingfile.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <vector>

namespace TARN {

/// A copy of the unsaved changes of a configuration file: a whole configuration of its own, which
/// survives the program.
///
/// The copy of NAME.tarn is NAME.tarn.unsaved in the same folder. If that folder takes no new file,
/// the copy is in the user's state folder, under a name made from the real path of the file. Links
/// do not matter: the copy belongs to the file that they lead to.
///
/// The object owns its copy alone: the copy is locked, and the system unlocks it when the process
/// ends, however that happens. A name that another program uses is left alone, and the next one is
/// taken: NAME.tarn.unsaved.2, and so on. Where a file system has no locks, copies of other
/// programs may be found, but writing still spares them.
class UnsavedFile
{
public:
    /// For the configuration file at @p path, which need not exist. There is no copy yet.
    explicit UnsavedFile(const QString &path);
    /// Leaves the copy where it is, for others to find.
    ~UnsavedFile();
    UnsavedFile(UnsavedFile &&other) noexcept;
    UnsavedFile &operator=(UnsavedFile &&other) noexcept;

    /// The copies of the file at @p path that no living program uses, the newest first. They belong
    /// to the returned objects. Takes a fixed number of looks at the disk.
    static std::vector<UnsavedFile> find(const QString &path);

    /// Gives the copy @p content as a whole, creating it if need be. Looks for the place anew each
    /// time, because links and permissions can change. On failure the former copy stays as it is,
    /// and @p error tells why.
    bool write(const QByteArray &content, Durability durability, QString *error);

    /// Removes the copy, if there is one. On failure it stays, and @p error tells why.
    bool remove(QString *error);

    /// Lets go of the copy, which stays.
    void release();

    /// Where the copy is, empty when there is none. The name stays the same while nothing changes
    /// about the folder.
    QString copyPath() const { return m_copyPath; }
    /// When the copy was written.
    QDateTime time() const;

private:
    /// A handle that keeps a file locked.
    class Lock
    {
    public:
        Lock() = default;
        explicit Lock(int handle);
        ~Lock();
        Lock(Lock &&other) noexcept;
        Lock &operator=(Lock &&other) noexcept;

        /// False when another program has locked the file.
        bool take() const;
        /// Whether the name @p path leads to the locked file itself.
        bool isOf(const QString &path) const;
        bool isOpen() const { return m_handle >= 0; }

    private:
        int m_handle = -1;
    };

    bool claim(const QString &copyPath);
    bool writeTo(const QString &base, const QByteArray &content, Durability durability,
                 QString *error);
    bool isOwn(const QString &base) const;

    QString m_path;
    QString m_copyPath;
    Lock m_lock; ///< Of the copy. Closed for a copy that this user may not open.
};

} // namespace TARN
