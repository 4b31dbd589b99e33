// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "regularfile.h"

#include <QFile>

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Files {

namespace {

constexpr qint64 PieceSize = 1024 * 1024;
constexpr qint64 UnknownSize = 64 * 1024;

Access accessTo(const struct stat &status)
{
    if (S_ISREG(status.st_mode))
        return Access::Granted;
    return S_ISDIR(status.st_mode) ? Access::Folder : Access::Special;
}

Access failed(int code, QString *error)
{
    *error = qt_error_string(code);
    return Access::Failed;
}

/// The number of bytes to read next from a file that reports @p size bytes, of which @p read are
/// read: one byte more than expected, to detect the end. Some files report no size.
qint64 nextPiece(qint64 size, qint64 read)
{
    return size >= read ? std::min(size - read + 1, PieceSize) : UnknownSize;
}

/// Reads until the end, or until there is more than @p limit. False after an error.
bool readPieces(QFile *file, qint64 limit, QByteArray *read,
                const std::function<void()> &afterPiece)
{
    const qint64 size = file->size();
    read->reserve(int(size) + 1);
    qint64 length = 1;
    while (length > 0 && read->size() <= limit) {
        const int before = read->size();
        read->resize(before + int(nextPiece(size, before)));
        length = file->read(read->data() + before, read->size() - before);
        read->resize(before + int(std::max<qint64>(length, 0)));
        if (afterPiece)
            afterPiece();
    }
    return length >= 0;
}

int openWithoutWaiting(const QByteArray &path)
{
    int handle = -1;
    do
        handle = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    while (handle < 0 && errno == EINTR);
    return handle;
}

} // namespace

Access openRegularFile(const QString &path, QFile *file, QString *error)
{
    const QByteArray encoded = QFile::encodeName(path);
    struct stat status = {};
    // Even opening can disturb a device or the writer of a pipe.
    if (::stat(encoded.constData(), &status) != 0)
        return failed(errno, error);
    Access access = accessTo(status);
    if (access != Access::Granted)
        return access;
    const int handle = openWithoutWaiting(encoded);
    if (handle < 0)
        return failed(errno, error);
    access = ::fstat(handle, &status) == 0 ? accessTo(status) : failed(errno, error);
    if (access != Access::Granted) {
        ::close(handle);
        return access;
    }
    if (file->open(handle, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return Access::Granted;
    ::close(handle);
    *error = file->errorString();
    return Access::Failed;
}

Access readRegularFile(const QString &path, qint64 limit, QByteArray *content, QString *error,
                       const std::function<void()> &afterPiece)
{
    content->clear();
    QFile file;
    const Access access = openRegularFile(path, &file, error);
    if (access != Access::Granted)
        return access;
    if (file.size() > limit)
        return Access::TooLarge;
    QByteArray read;
    const bool isRead = readPieces(&file, limit, &read, afterPiece);
    if (read.size() > limit)
        return Access::TooLarge;
    if (!isRead) {
        *error = file.errorString();
        return Access::Failed;
    }
    *content = read;
    return Access::Granted;
}

} // namespace Files
