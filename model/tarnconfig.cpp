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

#include <utility>

namespace TARN {

namespace {

/// The one way into a file, so that check and reading always agree.
class ConfigFile
{
    Q_DECLARE_TR_FUNCTIONS(TARN::ConfigFile)

public:
    explicit ConfigFile(const QString &path)
        : m_path(path)
    {
    }

    /// The cores; the caller owns them. On failure there are none, and errorText() tells why.
    QList<TarnCore *> read();

    QString errorText() const { return m_error; }
    ConfigLines takeLines() { return std::move(m_lines); }

private:
    QList<TarnCore *> readFrom(QIODevice *device);
    void refuse(const QString &reason);

    QString m_path;
    QString m_error;
    ConfigLines m_lines;
};

QList<TarnCore *> ConfigFile::read()
{
    QBuffer restored;
    if (restoreFile(m_path, &restored.buffer())) {
        restored.open(QIODevice::ReadOnly);
        return readFrom(&restored);
    }
    QFile file;
    QString reason;
    const Files::Access access = Files::openRegularFile(m_path, &file, &reason);
    if (access == Files::Access::Granted)
        return readFrom(&file);
    refuse(access == Files::Access::Failed ? reason
                                           : tr("It is no file. Choose a \".tarn\" file."));
    return {};
}

QList<TarnCore *> ConfigFile::readFrom(QIODevice *device)
{
    ConfigReader reader(device);
    if (!reader.read())
        refuse(reader.errorText());
    m_lines = reader.takeLines();
    return reader.takeCores();
}

void ConfigFile::refuse(const QString &reason)
{
    m_error = tr("Can not read %1. %2").arg(QDir::toNativeSeparators(m_path), reason);
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
    ConfigFile file(path);
    qDeleteAll(file.read());
    const QString error = file.errorText();
    if (!error.isEmpty())
        debugLine(error);
    return error.isEmpty();
}

QList<TarnCore *> readTARNConfigFromXml(const QString &path, bool *ok, QString *errorMessage)
{
    ConfigFile file(path);
    const QList<TarnCore *> cores = file.read();
    const QString error = file.errorText();
    if (ok)
        *ok = error.isEmpty();
    if (errorMessage && !error.isEmpty())
        *errorMessage = error;
    return cores;
}

QList<TarnCore *> readTARNConfigFromXml(const QString &path, bool *ok, QString *errorMessage,
                                        ConfigLines *lines)
{
    ConfigFile file(path);
    const QList<TarnCore *> cores = file.read();
    *errorMessage = file.errorText();
    *ok = errorMessage->isEmpty();
    *lines = file.takeLines();
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
