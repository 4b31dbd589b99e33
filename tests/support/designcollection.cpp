// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designcollection.h"

#include "files.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

namespace TarnTest {

/// The same for the same design: of names and contents of its files.
static QByteArray digestOf(const QString &folder, const QByteArray &info)
{
    QStringList files;
    QDirIterator file(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (file.hasNext())
        files.append(file.next());
    files.sort();
    QCryptographicHash digest(QCryptographicHash::Sha1);
    digest.addData(info);
    for (const QString &path : qAsConst(files))
        digest.addData(path.mid(folder.size()).toUtf8() + '\0' + readFile(path));
    return digest.result().toHex();
}

void collectDesign(const QString &folder, const QMap<QString, QVariant> &info)
{
    const QString collection = qEnvironmentVariable("TARN_COLLECT_DESIGNS");
    if (collection.isEmpty())
        return;
    QByteArray text = QJsonDocument(QJsonObject::fromVariantMap(info)).toJson();
    text.replace('"' + folder.toUtf8(), "\"@");
    const QString place = QDir(collection).filePath(QString::fromLatin1(digestOf(folder, text)));
    if (QDir().exists(place))
        return;
    QProcess::execute(QStringLiteral("cp"), {QStringLiteral("-a"), folder, place});
    writeFile(QDir(place).filePath(QStringLiteral("info.json")), text);
}

} // namespace TarnTest
