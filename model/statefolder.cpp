// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "statefolder.h"

#include "linkchain.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace TARN {

namespace {

QString stateFolder()
{
    QString base = qEnvironmentVariable("XDG_STATE_HOME");
    if (!QDir::isAbsolutePath(base))
        base = QDir::homePath() + QStringLiteral("/.local/state");
    return base + QStringLiteral("/tarn");
}

} // namespace

QString realPath(const QString &path)
{
    const QStringList chain = linkChain(path);
    const QString target = QFileInfo(chain.isEmpty() ? path : chain.last()).absoluteFilePath();
    // The part that exists can have links, the rest can not.
    QString existing = target;
    while (!QFileInfo::exists(existing))
        existing = QFileInfo(existing).path();
    const QString canonical = QFileInfo(existing).canonicalFilePath();
    return QDir::cleanPath(canonical + target.mid(existing.size()).prepend(QLatin1Char('/')));
}

QString stateFile(const QString &realPath, const QString &ending)
{
    const QByteArray hash =
        QCryptographicHash::hash(QFile::encodeName(realPath), QCryptographicHash::Sha256);
    return stateFolder() + QLatin1Char('/') + QString::fromLatin1(hash.toHex()) + ending;
}

void makeStateFolder()
{
    const QString folder = stateFolder();
    QDir().mkpath(QFileInfo(folder).path());
    ::mkdir(QFile::encodeName(folder).constData(), S_IRWXU);
}

} // namespace TARN
