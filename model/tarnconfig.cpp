// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "tarnconfig.h"

#include "configreader.h"
#include "configwriter.h"
#include "replacefile.h"
#include "tarncore.h"

#include <files/regularfile.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>

namespace TARN {

namespace {

/// What is wrong with the file at @p path, as the user sees it.
QString describe(const QString &path, const QString &reason)
{
    return QCoreApplication::translate("TARN::TarnConfig", "Can not read %1. %2")
        .arg(QDir::toNativeSeparators(path), reason);
}

QList<TarnCore *> readCores(const QString &path, QIODevice *device, QString *error)
{
    ConfigReader reader(device);
    if (!reader.read())
        *error = describe(path, reader.errorText());
    return reader.takeCores();
}

/// The one way into a file, so that check and read always agree. On failure @p error is filled.
QList<TarnCore *> readCores(const QString &path, QString *error)
{
    QBuffer restored;
    if (restoreFile(path, &restored.buffer())) {
        restored.open(QIODevice::ReadOnly);
        return readCores(path, &restored, error);
    }
    QFile file;
    QString reason;
    const Files::Access access = Files::openRegularFile(path, &file, &reason);
    if (access != Files::Access::Granted) {
        if (access != Files::Access::Failed)
            reason = QCoreApplication::translate("TARN::TarnConfig",
                                                 "It is no file. Choose a \".tarn\" file.");
        *error = describe(path, reason);
        return {};
    }
    return readCores(path, &file, error);
}

void debugLine(const QString &line)
{
    qDebug().noquote().nospace() << line;
}

} // namespace

void finishTARNFile(const QString &path)
{
    QByteArray content;
    restoreFile(path, &content);
}

bool checkTARNFile(const QString &path)
{
    QString error;
    qDeleteAll(readCores(path, &error));
    if (!error.isEmpty())
        debugLine(error);
    return error.isEmpty();
}

QList<TarnCore *> readTARNConfigFromXml(const QString &path, bool *ok, QString *errorMessage)
{
    QString error;
    const QList<TarnCore *> cores = readCores(path, &error);
    if (ok)
        *ok = error.isEmpty();
    if (errorMessage && !error.isEmpty())
        *errorMessage = error;
    return cores;
}

bool writeTARNConfigToXml(const QList<TarnCore *> &cores, const QString &path)
{
    ConfigWriter writer(cores);
    const QByteArray content = writer.content();
    QString error = writer.errorText();
    if (error.isEmpty() && replaceFile(path, content, &error))
        return true;
    debugLine(QStringLiteral("Can not write %1: %2").arg(QDir::toNativeSeparators(path), error));
    return false;
}

} // namespace TARN
