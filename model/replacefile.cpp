// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "replacefile.h"

#include "linkchain.h"
#include "safetycopy.h"
#include "siblingfile.h"

#include <files/sizelimitguard.h>

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace TARN {

namespace {

void debugLine(const QString &text, const QString &path, const QString &reason = QString())
{
    qDebug().noquote().nospace() << text.arg(QDir::toNativeSeparators(path)) << reason;
}

bool isForbidden(int code)
{
    return code == EACCES || code == EPERM || code == EROFS;
}

/// Gives the new file owner, group and permissions of the one that it replaces, as far as the
/// system allows; only an administrator can give a file away.
void keepStatus(int newFile, const struct stat &former)
{
    mode_t mode = former.st_mode & 07777;
    if (::fchown(newFile, former.st_uid, former.st_gid) != 0) {
        if (::fchown(newFile, uid_t(-1), former.st_gid) != 0)
            mode &= ~mode_t(S_ISGID);
        mode &= ~mode_t(S_ISUID); // It would run the file as another user than before.
    }
    ::fchmod(newFile, mode);
}

/// Makes @p content the whole content of the open file, on the disk too.
bool overwrite(QFile *file, const QByteArray &content, QString *error)
{
    if (file->seek(0) && file->write(content) == content.size() && file->resize(content.size()))
        return syncFile(*file, error);
    *error = file->errorString();
    return false;
}

/// Reserves space for @p size bytes.
bool takeSpace(QFile *file, qint64 size, QString *error)
{
    const qint64 former = file->size();
    const int code = size > former ? ::posix_fallocate(file->handle(), 0, size) : 0;
    if (code == 0)
        return true;
    *error = qt_error_string(code);
    file->resize(former);
    return false;
}

/// For a file that cannot be replaced as a whole. The space is taken beforehand and the former
/// content is put back after an error. If the process ends during the write, restoreFile() helps.
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
    QString copyError;
    if (!keepSafetyCopy(path, former, content, &copyError))
        debugLine(QStringLiteral("Can not keep a copy of %1: "), path, copyError);
    QString restoreError;
    const bool started = takeSpace(&file, content.size(), error);
    const bool written = started && overwrite(&file, content, error);
    const bool isWhole = written || !started || overwrite(&file, former, &restoreError);
    if (isWhole)
        dropSafetyCopy(path);
    return written;
}

enum class Replacement {
    Done,
    Failed,
    Forbidden, ///< The folder forbids it. Writing into the file itself may still work.
};

/// Writes a new file and lets it take the place of @p target.
Replacement replaceWhole(const QString &target, const QByteArray &content, QString *error)
{
    const QByteArray path = QFile::encodeName(target);
    struct stat former = {};
    const bool exists = ::stat(path.constData(), &former) == 0;
    const auto failed = [exists, error](int code, bool forbidden) {
        *error = qt_error_string(code);
        return exists && forbidden ? Replacement::Forbidden : Replacement::Failed;
    };
    if (exists && ::access(path.constData(), W_OK) != 0)
        return failed(errno, false);
    SiblingFile file(target);
    if (const int code = file.create(0666); code != 0)
        return failed(code, isForbidden(code));
    if (exists)
        keepStatus(file.handle(), former);
    if (!file.write(content, error))
        return Replacement::Failed;
    // Fails for other users' files in a folder with the sticky bit, and for mount points.
    if (const int code = file.takePlace(); code != 0)
        return failed(code, true);
    return Replacement::Done;
}

} // namespace

bool replaceFile(const QString &path, const QByteArray &content, QString *error)
{
    const Files::SizeLimitGuard guard;
    const QStringList chain = linkChain(path);
    const QString target = chain.isEmpty() ? QString() : chain.last();
    const QFileInfo existing(target);
    if (target.isEmpty() || (existing.exists() && !existing.isFile())) {
        *error = QStringLiteral("it is no regular file");
        return false;
    }
    const Replacement replacement = replaceWhole(target, content, error);
    return replacement == Replacement::Done ||
           (replacement == Replacement::Forbidden && writeInPlace(target, content, error));
}

bool restoreFile(const QString &path, QByteArray *content)
{
    if (!findUnfinishedWrite(path, content))
        return false;
    debugLine(QStringLiteral("Repeating the last write to %1, which came to no end"), path);
    QString error;
    if (replaceFile(path, *content, &error))
        dropSafetyCopy(path); // It is still there when the folder allows new files by now.
    else
        debugLine(QStringLiteral("Can not write %1: "), path, error);
    return true;
}

} // namespace TARN
