// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "replacefile.h"

#include <files/sizelimitguard.h>

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace TARN {

namespace {

/// The file behind a chain of symbolic links, which need not exist; @p path itself when it is no
/// link; empty when the chain has no end. QSaveFile follows only the first link.
QString linkTarget(const QString &path)
{
    constexpr int LongestChain = 40;
    QString target = path;
    for (int i = 0; i < LongestChain && QFileInfo(target).isSymLink(); ++i)
        target = QFileInfo(target).symLinkTarget();
    return QFileInfo(target).isSymLink() ? QString() : target;
}

QString systemError(int code)
{
    return QString::fromLocal8Bit(std::strerror(code));
}

bool isForbidden(int code)
{
    return code == EACCES || code == EPERM || code == EROFS;
}

/// Gives the new file the owner and the group of the one that it replaces, as far as the system
/// allows; only an administrator can give a file away.
void keepOwner(int newFile, const QByteArray &formerPath)
{
    struct stat former = {};
    struct stat now = {};
    if (::stat(formerPath.constData(), &former) != 0 || ::fstat(newFile, &now) != 0)
        return;
    if (former.st_uid == now.st_uid && former.st_gid == now.st_gid)
        return;
    if (::fchown(newFile, former.st_uid, former.st_gid) != 0 &&
        ::fchown(newFile, uid_t(-1), former.st_gid) != 0)
        return;
    ::fchmod(newFile, former.st_mode & 07777);
}

/// Waits until the open file is on the disk; file systems that cannot tell count as done.
bool sync(const QFileDevice &file, QString *error)
{
    if (::fsync(file.handle()) == 0 || errno == EINVAL || errno == ENOSYS)
        return true;
    *error = systemError(errno);
    return false;
}

/// Makes @p content the whole content of the open file, on the disk too.
bool overwrite(QFile *file, const QByteArray &content, QString *error)
{
    if (file->seek(0) && file->write(content) == content.size() && file->resize(content.size()))
        return sync(*file, error);
    *error = file->errorString();
    return false;
}

/// For a file that cannot be replaced as a whole. The space is taken beforehand and the former
/// content is put back after an error.
bool writeInPlace(const QString &path, const QByteArray &content, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly | QIODevice::Unbuffered)) {
        *error = file.errorString();
        return false;
    }
    const QByteArray former = file.readAll();
    if (former.size() != file.size()) {
        *error = QStringLiteral("the former content cannot be read");
        return false;
    }
    if (content.size() > former.size()) {
        const int code = ::posix_fallocate(file.handle(), 0, content.size());
        if (code != 0) {
            *error = systemError(code);
            file.resize(former.size());
            return false;
        }
    }
    QString restoreError;
    if (overwrite(&file, content, error))
        return true;
    overwrite(&file, former, &restoreError);
    return false;
}

} // namespace

bool replaceFile(const QString &path, const QByteArray &content, QString *error)
{
    const Files::SizeLimitGuard guard;
    const QString target = linkTarget(path);
    const QFileInfo existing(target);
    if (target.isEmpty() || (existing.exists() && !existing.isFile())) {
        *error = QStringLiteral("it is no regular file");
        return false;
    }

    // QSaveFile's own fallback truncates the file before it writes, so that a full disk would lose
    // both contents; writeInPlace() does not.
    QSaveFile file(target);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        if (isForbidden(errno) && existing.exists())
            return writeInPlace(target, content, error);
        *error = file.errorString();
        return false;
    }
    keepOwner(file.handle(), QFile::encodeName(target));
    if (file.write(content) != content.size()) {
        *error = file.errorString();
        return false;
    }
    if (!sync(file, error))
        return false;
    if (file.commit())
        return true;
    // Other people's files in a folder with the sticky bit, and files that are mount points.
    if (file.error() == QFileDevice::RenameError && existing.exists())
        return writeInPlace(target, content, error);
    *error = file.errorString();
    return false;
}

} // namespace TARN
