// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "workfolder.h"

#include <files/sizelimitguard.h>
#include <netweir/internal/ground/messages.h>

#include <QFile>
#include <QRandomGenerator>

#include <array>
#include <cstdio>
#include <limits>
#include <sys/resource.h>
#include <sys/stat.h>

namespace NETWEIR::Internal {

namespace {

/// The limit of the session on file sizes. Reaching it is not an error of the folder.
qint64 largestFile()
{
    rlimit limit;
    const bool isLimited =
        getrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_cur <= std::numeric_limits<int>::max();
    return isLimited ? qint64(limit.rlim_cur) : std::numeric_limits<int>::max();
}

/// Null on success, otherwise the error of the system.
QString writeNew(const QString &path, const QByteArray &content)
{
    const Files::SizeLimitGuard guard;
    QFile::remove(path);
    QFile file(path);
    bool ok = file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered);
    // A full disk accepts a part at first. Only the next write fails with a reason.
    for (qint64 written = 0; ok && written < content.size();) {
        const qint64 size = file.write(content.constData() + written, content.size() - written);
        ok = size > 0;
        written += size;
    }
    return ok ? QString() : file.errorString();
}

} // namespace

QString WorkFolder::problem() const
{
    if (!m_folder.isValid())
        return Text::
            tr("No temporary folder can be created in %1: %2. Free some space there, or set the "
               "environment variable TMPDIR to another folder.")
                .arg(Files::temporaryPath(), m_folder.errorString());
    std::array<quint32, 16 * 1024> room; // Random, so that file systems cannot compress it.
    QRandomGenerator::global()->fillRange(room.data(), int(room.size()));
    const qint64 size = qMin<qint64>(room.size() * sizeof(quint32), largestFile());
    const QString probe = path(QStringLiteral("netweir_probe"));
    const QString reason = writeNew(
        probe, QByteArray::fromRawData(reinterpret_cast<const char *>(room.data()), int(size)));
    QFile::remove(probe);
    if (reason.isEmpty())
        return {};
    return Text::
        tr("The temporary folder in %1 cannot be written to: %2. Free some space there, or set the "
           "environment variable TMPDIR to another folder.")
            .arg(Files::temporaryPath(), reason);
}

bool WorkFolder::write(const QString &name, const QByteArray &content, QString *error) const
{
    const QString reason = m_folder.isValid() ? writeNew(path(name), content) : QString();
    if (m_folder.isValid() && reason.isEmpty())
        return true;
    *error = causeOf(Text::tr("A file in the temporary folder in %1 cannot be written: %2. Set the "
                              "environment variable TMPDIR to another folder.")
                         .arg(Files::temporaryPath(), reason));
    return false;
}

bool WorkFolder::rename(const QString &name, const QString &newName) const
{
    return std::rename(QFile::encodeName(path(name)).constData(),
                       QFile::encodeName(path(newName)).constData()) == 0;
}

bool WorkFolder::makePipe(const QString &name) const
{
    return m_folder.isValid() && ::mkfifo(QFile::encodeName(path(name)).constData(), 0600) == 0;
}

bool WorkFolder::link(const QString &target, const QString &name, QString *error) const
{
    QFile file(target);
    if (m_folder.isValid() && file.link(path(name)))
        return true;
    *error = causeOf(Text::tr("No link to %1 can be created in the temporary folder in %2: %3. Set "
                              "the environment variable TMPDIR to a folder that supports links.")
                         .arg(target, Files::temporaryPath(), file.errorString()));
    return false;
}

/// A problem of the folder explains every other failure.
QString WorkFolder::causeOf(const QString &failure) const
{
    const QString cause = problem();
    return cause.isEmpty() ? failure : cause;
}

} // namespace NETWEIR::Internal
