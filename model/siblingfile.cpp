// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "siblingfile.h"

#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace TARN {

namespace {

constexpr int SuffixLength = 6;

QByteArray randomSuffix()
{
    constexpr char letters[] = "abcdefghijklmnopqrstuvwxyz0123456789";
    QByteArray suffix;
    for (int i = 0; i < SuffixLength; ++i)
        suffix += letters[QRandomGenerator::global()->bounded(int(std::strlen(letters)))];
    return suffix;
}

int longestName(const QByteArray &folder)
{
    const long limit = ::pathconf(folder.constData(), _PC_NAME_MAX);
    return limit > 0 ? int(limit) : 255;
}

/// Makes sure that a new name in @p folder is on the disk, as far as the file system can.
void syncFolder(const QByteArray &folder)
{
    const int handle = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return;
    ::fsync(handle);
    ::close(handle);
}

/// Returns 0 or an error number. A file system without the one way has the other.
int renameToNew(const QByteArray &path, const QByteArray &name)
{
    const char *from = path.constData();
    const char *to = name.constData();
    if (::renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
    if (::link(from, to) != 0)
        return errno;
    ::unlink(from);
    return 0;
}

} // namespace

bool syncFile(const QFileDevice &file, QString *error)
{
    if (::fsync(file.handle()) == 0 || errno == EINVAL || errno == ENOSYS)
        return true;
    *error = qt_error_string();
    return false;
}

SiblingFile::SiblingFile(const QString &target)
    : m_target(target)
{
}

SiblingFile::~SiblingFile()
{
    if (!m_path.isEmpty())
        ::unlink(m_path.constData());
}

/// The name of the target and a random end. A name too long for the folder is cut.
QByteArray SiblingFile::newPath() const
{
    const QFileInfo target(m_target);
    const QByteArray folder = QFile::encodeName(target.absolutePath());
    const int longest = longestName(folder) - SuffixLength - 1;
    QString name = target.fileName();
    while (QFile::encodeName(name).size() > longest)
        name.chop(1);
    return folder + '/' + QFile::encodeName(name) + '.' + randomSuffix();
}

int SiblingFile::create(unsigned mode)
{
    // If the target's own name is too long for the folder, the file could never take its place.
    const QFileInfo target(m_target);
    const QByteArray folder = QFile::encodeName(target.absolutePath());
    if (QFile::encodeName(target.fileName()).size() > longestName(folder))
        return ENAMETOOLONG;
    int handle = -1;
    QByteArray path;
    do {
        path = newPath();
        handle = ::open(path.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode_t(mode));
    } while (handle < 0 && (errno == EEXIST || errno == EINTR));
    if (handle < 0)
        return errno;
    m_path = path;
    m_file.open(handle, QIODevice::ReadWrite | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle);
    return 0;
}

bool SiblingFile::write(const QByteArray &content, QString *error, Durability durability)
{
    // A disk that gets full takes a part and names the reason at the next attempt.
    qint64 done = 0;
    while (done < content.size()) {
        const qint64 taken = m_file.write(content.constData() + done, content.size() - done);
        if (taken <= 0) {
            *error = m_file.errorString();
            return false;
        }
        done += taken;
    }
    return durability == Durability::EndOfProcess || syncFile(m_file, error);
}

int SiblingFile::takePlace(Durability durability)
{
    const QByteArray target = QFile::encodeName(m_target);
    const bool done = std::rename(m_path.constData(), target.constData()) == 0;
    return placed(done ? 0 : errno, durability);
}

int SiblingFile::takeNewPlace(const QString &place, Durability durability)
{
    return placed(renameToNew(m_path, QFile::encodeName(place)), durability);
}

/// Notes what the attempt to take a place came to.
int SiblingFile::placed(int code, Durability durability)
{
    if (code != 0)
        return code;
    m_path.clear();
    if (durability == Durability::PowerFailure)
        syncFolder(QFile::encodeName(QFileInfo(m_target).absolutePath()));
    return 0;
}

} // namespace TARN
