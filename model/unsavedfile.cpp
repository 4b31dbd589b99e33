// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "unsavedfile.h"

#include "linkchain.h"
#include "statefolder.h"

#include <files/sizelimitguard.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace TARN {

namespace {

const QString Ending = QStringLiteral(".unsaved");

/// All names that copies with the first name @p base can have. Gaps are usual: of two programs, the
/// one with the first name may end in order and the other one not.
QStringList namesFrom(const QString &base)
{
    constexpr int Programs = 16;
    QStringList names{base};
    for (int i = 2; i <= Programs; ++i)
        names.append(base + QLatin1Char('.') + QString::number(i));
    return names;
}

/// The names of all copies of the file at @p path. A link may have been a file when its copy was
/// written.
QStringList namesOf(const QString &path)
{
    const QString file = realPath(path);
    QStringList bases{file + Ending};
    const QStringList chain = linkChain(path);
    for (const QString &place : chain) {
        const QFileInfo info(place);
        bases.append(realPath(info.absolutePath()) + QLatin1Char('/') + info.fileName() + Ending);
    }
    bases.append(stateFile(file, Ending));
    bases.removeDuplicates();
    QStringList names;
    for (const QString &base : qAsConst(bases))
        names += namesFrom(base);
    return names;
}

/// Opens the copy to lock it. On a network drive, only a handle for writing can do so.
int openCopy(const QString &copyPath)
{
    const QByteArray path = QFile::encodeName(copyPath);
    constexpr int Flags = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    const int handle = ::open(path.constData(), O_RDWR | Flags);
    return handle >= 0 ? handle : ::open(path.constData(), O_RDONLY | Flags);
}

/// The state of what has that name, which is not followed if it is a link.
struct stat statusOf(const QString &path)
{
    struct stat status = {};
    if (::lstat(QFile::encodeName(path).constData(), &status) != 0)
        return {};
    return status;
}

QString reasonAt(const QString &path, const QString &reason)
{
    return QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(path), reason);
}

} // namespace

UnsavedFile::Lock::Lock(int handle)
    : m_handle(handle)
{
}

UnsavedFile::Lock::~Lock()
{
    if (m_handle >= 0)
        ::close(m_handle);
}

UnsavedFile::Lock::Lock(Lock &&other) noexcept
    : m_handle(std::exchange(other.m_handle, -1))
{
}

UnsavedFile::Lock &UnsavedFile::Lock::operator=(Lock &&other) noexcept
{
    std::swap(m_handle, other.m_handle);
    return *this;
}

bool UnsavedFile::Lock::take() const
{
    return ::flock(m_handle, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

bool UnsavedFile::Lock::isOf(const QString &path) const
{
    struct stat own = {};
    if (m_handle < 0 || ::fstat(m_handle, &own) != 0)
        return false;
    const struct stat named = statusOf(path);
    return own.st_dev == named.st_dev && own.st_ino == named.st_ino;
}

UnsavedFile::UnsavedFile(const QString &path)
    : m_path(path)
{
}

UnsavedFile::~UnsavedFile() = default;

UnsavedFile::UnsavedFile(UnsavedFile &&other) noexcept = default;

UnsavedFile &UnsavedFile::operator=(UnsavedFile &&other) noexcept = default;

std::vector<UnsavedFile> UnsavedFile::find(const QString &path)
{
    std::vector<UnsavedFile> found;
    const QStringList names = namesOf(path);
    for (const QString &name : names) {
        UnsavedFile file(path);
        if (file.claim(name))
            found.push_back(std::move(file));
    }
    const auto isNewer = [](const UnsavedFile &one, const UnsavedFile &other) {
        return one.time() > other.time();
    };
    std::stable_sort(found.begin(), found.end(), isNewer);
    return found;
}

/// Makes the copy at @p copyPath the one of this object, unless another program uses it.
bool UnsavedFile::claim(const QString &copyPath)
{
    // Another program may replace its copy between opening and locking. Where files have no steady
    // numbers, it looks so every time.
    constexpr int Attempts = 20;
    for (int i = 0; i < Attempts; ++i) {
        const struct stat status = statusOf(copyPath);
        if (!S_ISREG(status.st_mode))
            return false;
        Lock lock(openCopy(copyPath));
        if (!lock.isOpen() && errno == ENOENT)
            continue;
        // What another user keeps to himself is none of our business.
        const bool isClosedToItsUser = errno == EACCES && status.st_uid == ::geteuid();
        if (lock.isOpen() ? !lock.take() : !isClosedToItsUser)
            return false;
        if (lock.isOpen() && !lock.isOf(copyPath))
            continue;
        m_copyPath = copyPath;
        m_lock = std::move(lock);
        return true;
    }
    return false;
}

bool UnsavedFile::write(const QByteArray &content, Durability durability, QString *error)
{
    const Files::SizeLimitGuard guard;
    const QString file = realPath(m_path);
    const QString beside = file + Ending;
    QString besideError;
    if (writeTo(beside, content, durability, &besideError))
        return true;
    const QString away = stateFile(file, Ending);
    QString awayError;
    makeStateFolder();
    if (writeTo(away, content, durability, &awayError))
        return true;
    *error = reasonAt(beside, besideError) + QStringLiteral("; ") + reasonAt(away, awayError);
    return false;
}

bool UnsavedFile::writeTo(const QString &base, const QByteArray &content, Durability durability,
                          QString *error)
{
    const bool again = isOwn(base);
    SiblingFile file(again ? m_copyPath : base);
    int code = file.create(S_IRUSR | S_IWUSR);
    if (code == 0 && !file.write(content, error, durability))
        return false;
    // Locked before it gets its name. Without locks it is still the only one of this name.
    Lock lock(code == 0 ? ::fcntl(file.handle(), F_DUPFD_CLOEXEC, 0) : -1);
    lock.take();
    QString place = m_copyPath;
    if (code == 0 && again) {
        code = file.takePlace(durability);
    } else if (code == 0) {
        const QStringList names = namesFrom(base);
        for (const QString &name : names) {
            place = name;
            code = file.takeNewPlace(place, durability);
            if (code != EEXIST)
                break;
        }
    }
    if (code != 0) {
        *error = qt_error_string(code);
        return false;
    }
    QString ignored;
    if (!again)
        remove(&ignored); // In its former place.
    m_copyPath = place;
    m_lock = std::move(lock);
    return true;
}

/// Whether this object has its copy under one of the names from @p base on. Somebody may have moved
/// or removed it.
bool UnsavedFile::isOwn(const QString &base) const
{
    return m_lock.isOf(m_copyPath) && namesFrom(base).contains(m_copyPath);
}

bool UnsavedFile::remove(QString *error)
{
    const QByteArray path = QFile::encodeName(m_copyPath);
    if (m_lock.isOf(m_copyPath) && ::unlink(path.constData()) != 0) {
        *error = reasonAt(m_copyPath, qt_error_string());
        return false;
    }
    release();
    return true;
}

void UnsavedFile::release()
{
    m_lock = Lock();
    m_copyPath.clear();
}

QDateTime UnsavedFile::time() const
{
    return QFileInfo(m_copyPath).lastModified();
}

} // namespace TARN
