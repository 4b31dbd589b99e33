// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "filestate.h"

#include "linkchain.h"

#include <QFile>

#include <sys/stat.h>

namespace TARN {

namespace {

struct stat statusOf(const QString &path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return {};
    return status;
}

template <typename... Numbers>
QByteArray joined(Numbers... numbers)
{
    QByteArray text;
    for (const qint64 number : {qint64(numbers)...})
        text += '/' + QByteArray::number(number);
    return text;
}

} // namespace

QByteArray fileIdentity(const QString &path)
{
    const struct stat status = statusOf(path);
    const QStringList chain = linkChain(path);
    return QFile::encodeName(chain.join(QLatin1Char('\0'))) + joined(status.st_dev, status.st_ino);
}

QByteArray fileState(const QString &path)
{
    const struct stat status = statusOf(path);
    return fileIdentity(path) + joined(status.st_size, status.st_mtim.tv_sec,
                                       status.st_mtim.tv_nsec, status.st_ctim.tv_sec,
                                       status.st_ctim.tv_nsec);
}

} // namespace TARN
