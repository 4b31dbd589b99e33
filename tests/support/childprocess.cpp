// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "childprocess.h"

#include <QByteArray>
#include <QFile>

#include <grp.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace TarnTest {

QString inChild(const std::function<QString()> &check)
{
    int ends[2] = {};
    if (::pipe(ends) != 0)
        return QStringLiteral("no pipe");
    const pid_t child = ::fork();
    if (child == 0) {
        const QByteArray problem = check().toUtf8();
        const bool sent = ::write(ends[1], problem.constData(), size_t(problem.size())) >= 0;
        ::_exit(sent ? 0 : 1);
    }
    ::close(ends[1]);
    QFile output;
    output.open(ends[0], QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    QString problem = QString::fromUtf8(output.readAll());
    int status = 0;
    ::waitpid(child, &status, 0);
    if (status != 0)
        problem += QStringLiteral("child ended with status %1").arg(status);
    return problem;
}

bool becomeOrdinaryUser()
{
    return ::geteuid() != 0 || (::setgroups(0, nullptr) == 0 && ::setgid(OrdinaryUser) == 0 &&
                                ::setuid(OrdinaryUser) == 0);
}

void limitFileSize(quint64 size)
{
    const rlimit limit = {size, size};
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

bool mountSmallDisk(const QString &folder, int size)
{
    const QByteArray options = "mode=0777,size=" + QByteArray::number(size);
    return ::unshare(CLONE_NEWNS) == 0 &&
           ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           ::mount("none", QFile::encodeName(folder).constData(), "tmpfs", 0,
                   options.constData()) == 0;
}

bool canMountSmallDisk(const QString &folder)
{
    return ::geteuid() == 0 && inChild([&folder] {
                                   return mountSmallDisk(folder, 4096) ? QString()
                                                                       : QStringLiteral("no");
                               }).isEmpty();
}

void giveToOrdinaryUser(const QString &path)
{
    if (::geteuid() == 0 &&
        ::chown(QFile::encodeName(path).constData(), OrdinaryUser, OrdinaryUser) != 0)
        qFatal("cannot give a file away");
}

} // namespace TarnTest
