// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "safetycopy.h"

#include "siblingfile.h"
#include "statefolder.h"

#include <files/regularfile.h>

#include <QCryptographicHash>
#include <QDataStream>
#include <QFile>

#include <algorithm>

#include <sys/stat.h>

namespace TARN {

namespace {

constexpr char Magic[] = "TARN safety copy 1";

/// What the file held before the write and what it was to hold afterwards.
struct Contents
{
    QByteArray former;
    QByteArray wanted;
};

QString copyOf(const QString &file)
{
    return stateFile(file, QStringLiteral(".copy"));
}

QByteArray checksum(const QByteArray &path, const Contents &contents)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const QByteArray &each : {path, contents.former, contents.wanted})
        hash.addData(QCryptographicHash::hash(each, QCryptographicHash::Sha256));
    return hash.result();
}

void prepare(QDataStream *stream)
{
    stream->setVersion(QDataStream::Qt_5_15);
}

bool readContents(const QString &path, Contents *contents)
{
    QFile file;
    QString error;
    if (Files::openRegularFile(copyOf(path), &file, &error) != Files::Access::Granted)
        return false;
    QDataStream stream(&file);
    prepare(&stream);
    QByteArray magic, owner, sum;
    stream >> magic >> owner >> contents->former >> contents->wanted >> sum;
    return stream.status() == QDataStream::Ok && magic == Magic &&
           owner == QFile::encodeName(path) && sum == checksum(owner, *contents);
}

/// True when each byte of @p found belongs to the former content, to the wanted one or to the space
/// that was taken for it.
bool isMixture(const QByteArray &found, const Contents &contents)
{
    const auto isByteOf = [&found](const QByteArray &content, int i) {
        return i < content.size() && found.at(i) == content.at(i);
    };
    if (found.size() > std::max(contents.former.size(), contents.wanted.size()))
        return false;
    for (int i = 0; i < found.size(); ++i) {
        const bool isSpace = i >= contents.former.size() && found.at(i) == '\0';
        if (!isSpace && !isByteOf(contents.former, i) && !isByteOf(contents.wanted, i))
            return false;
    }
    return found.size() >= std::min(contents.former.size(), contents.wanted.size());
}

} // namespace

bool keepSafetyCopy(const QString &path, const QByteArray &former, const QByteArray &content,
                    QString *error)
{
    const QString file = realPath(path);
    const QByteArray owner = QFile::encodeName(file);
    QByteArray copy;
    QDataStream stream(&copy, QIODevice::WriteOnly);
    prepare(&stream);
    stream << QByteArray(Magic) << owner << former << content << checksum(owner, {former, content});

    makeStateFolder();
    SiblingFile place(copyOf(file));
    const int code = place.create(S_IRUSR | S_IWUSR);
    if (code != 0) {
        *error = qt_error_string(code);
        return false;
    }
    if (!place.write(copy, error))
        return false;
    const int moved = place.takePlace();
    if (moved != 0)
        *error = qt_error_string(moved);
    return moved == 0;
}

void dropSafetyCopy(const QString &path)
{
    QFile::remove(copyOf(realPath(path)));
}

bool findUnfinishedWrite(const QString &path, QByteArray *content)
{
    Contents contents;
    if (!readContents(realPath(path), &contents))
        return false;
    QByteArray found;
    QString error;
    const qint64 limit = std::max(contents.former.size(), contents.wanted.size());
    if (Files::readRegularFile(path, limit, &found, &error) != Files::Access::Granted)
        return false;
    if (found == contents.former || found == contents.wanted) {
        dropSafetyCopy(path);
        return false;
    }
    *content = contents.wanted;
    return isMixture(found, contents);
}

} // namespace TARN
