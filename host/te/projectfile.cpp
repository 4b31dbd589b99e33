// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "project.h"

#include "options.h"
#include "teconstants.h"
#include "wholefile.h"

#include <files/sizelimitguard.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QSet>

#include <algorithm>

namespace TE {

namespace {

constexpr int FormatVersion = 1;

class ProjectFile
{
    Q_DECLARE_TR_FUNCTIONS(TE::ProjectFile)
};

QString member(const QString &where, const QString &key)
{
    return where.isEmpty() ? key : where + QLatin1Char('.') + key;
}

QString element(const QString &where, int index)
{
    return QStringLiteral("%1[%2]").arg(where, QString::number(index));
}

/// Turns the document of a project file into a project. Every function returns false at the first
/// thing that is wrong, with error() set to what it is and where in the document.
class Reader
{
public:
    explicit Reader(const QString &path);

    bool read(const QJsonObject &root);
    const Project &project() const { return m_project; }
    QString error() const { return m_error; }

private:
    bool fail(const QString &where, const QString &what);
    bool checkKeys(const QString &where, const QJsonObject &object, const QStringList &known);
    bool readVersion(const QJsonValue &value);
    bool readText(const QString &where, const QJsonValue &value, QString *text);
    bool readName(const QString &where, const QJsonValue &value, QString *text);
    bool readTexts(const QString &where, const QJsonValue &value, QStringList *texts);
    bool readPath(const QString &where, const QJsonValue &value, QString *path);
    bool readSource(const QString &where, const QJsonValue &value);
    bool readSources(const QJsonValue &value);
    bool readOptions(const QJsonValue &value);
    bool readOption(const QString &name, const QJsonValue &value);
    bool readPaths(const QString &where, const QJsonValue &value, QStringList *paths);
    bool readMacros(const QJsonValue &value);
    bool readDevice(const QJsonValue &value);

    Project m_project;
    QSet<QString> m_paths;
    QString m_error;
};

Reader::Reader(const QString &path)
{
    const QFileInfo info(path);
    m_project.filePath = QDir::cleanPath(info.absoluteFilePath());
    m_project.workingDir = QDir::cleanPath(info.absolutePath());
    m_project.name = info.completeBaseName();
}

bool Reader::fail(const QString &where, const QString &what)
{
    m_error = QStringLiteral("%1: %2").arg(where, what);
    return false;
}

bool Reader::read(const QJsonObject &root)
{
    const QStringList known = {QStringLiteral("version"),
                               QStringLiteral("name"),
                               QStringLiteral("top"),
                               QStringLiteral("sources"),
                               QStringLiteral("options"),
                               QStringLiteral("libraryFiles"),
                               QStringLiteral("macros"),
                               QStringLiteral("device"),
                               QStringLiteral("libraryFolders"),
                               QStringLiteral("libraryExtensions")};
    QString top;
    if (!readVersion(root.value(QLatin1String("version"))) || !checkKeys({}, root, known) ||
        !readName(known[1], root.value(known[1]), &m_project.name) ||
        !readText(known[2], root.value(known[2]), &top))
        return false;
    if (!top.isEmpty())
        m_project.options.insert(QLatin1String(OPT::TOPMODULE), top);
    return readSources(root.value(known[3])) && readOptions(root.value(known[4])) &&
           readPaths(known[5], root.value(known[5]), &m_project.libraryFiles) &&
           readMacros(root.value(known[6])) && readDevice(root.value(known[7])) &&
           readPaths(known[8], root.value(known[8]), &m_project.libraryFolders) &&
           readTexts(known[9], root.value(known[9]), &m_project.libraryExtensions);
}

bool Reader::readVersion(const QJsonValue &value)
{
    if (value.toDouble() == FormatVersion)
        return true;
    return fail(QStringLiteral("version"),
                ProjectFile::tr("must be %1, the version of project files that this application "
                                "reads")
                    .arg(FormatVersion));
}

bool Reader::checkKeys(const QString &where, const QJsonObject &object, const QStringList &known)
{
    for (auto it = object.begin(); it != object.end(); ++it) {
        if (!known.contains(it.key())) {
            return fail(
                member(where, it.key()),
                ProjectFile::tr("unknown key, known are: %1").arg(known.join(QLatin1String(", "))));
        }
    }
    return true;
}

bool Reader::readText(const QString &where, const QJsonValue &value, QString *text)
{
    if (value.isUndefined())
        return true;
    if (!value.isString())
        return fail(where, ProjectFile::tr("must be a text"));
    const QString read = value.toString();
    const auto isUnusable = [](QChar c) { return c < QLatin1Char(' '); };
    if (std::any_of(read.begin(), read.end(), isUnusable) || !read.isValidUtf16())
        return fail(where, ProjectFile::tr("must not hold control characters"));
    *text = read;
    return true;
}

bool Reader::readName(const QString &where, const QJsonValue &value, QString *text)
{
    if (!readText(where, value, text))
        return false;
    if (text->isEmpty() || text->contains(QLatin1Char('/')))
        return fail(where, ProjectFile::tr("must not be empty and must not hold '/'"));
    return true;
}

bool Reader::readTexts(const QString &where, const QJsonValue &value, QStringList *texts)
{
    if (value.isUndefined())
        return true;
    if (!value.isArray())
        return fail(where, ProjectFile::tr("must be a list of texts"));
    const QJsonArray array = value.toArray();
    for (int i = 0; i < array.size(); ++i) {
        QString text;
        if (!readText(element(where, i), array.at(i), &text))
            return false;
        texts->append(text);
    }
    return true;
}

bool Reader::readPath(const QString &where, const QJsonValue &value, QString *path)
{
    QString text;
    if (!readText(where, value, &text))
        return false;
    if (text.isEmpty())
        return fail(where, ProjectFile::tr("must be a path"));
    *path = QDir::cleanPath(QDir(m_project.workingDir).absoluteFilePath(text));
    return true;
}

bool Reader::readSource(const QString &where, const QJsonValue &value)
{
    if (!value.isObject())
        return fail(where, ProjectFile::tr("must be an object"));
    const QJsonObject object = value.toObject();
    const QStringList known = {QStringLiteral("file"), QStringLiteral("type"),
                               QStringLiteral("enabled")};
    ProjectSource source;
    if (!checkKeys(where, object, known) ||
        !readPath(member(where, known[0]), object.value(known[0]), &source.path))
        return false;
    source.type = fileTypeOf(source.path);

    const QJsonValue type = object.value(known[1]);
    if (!type.isUndefined()) {
        source.type = fileTypeFromName(type.toString());
        if (source.type < 0) {
            return fail(member(where, known[1]),
                        ProjectFile::tr("must be one of %1")
                            .arg(fileTypeNames().join(QLatin1String(", "))));
        }
    }
    const QJsonValue enabled = object.value(known[2]);
    if (!enabled.isUndefined() && !enabled.isBool())
        return fail(member(where, known[2]), ProjectFile::tr("must be true or false"));
    source.enabled = enabled.toBool(true);

    if (m_paths.contains(source.path))
        return fail(member(where, known[0]),
                    ProjectFile::tr("%1 is listed twice").arg(source.path));
    m_paths.insert(source.path);
    m_project.sources.append(source);
    return true;
}

bool Reader::readSources(const QJsonValue &value)
{
    const QString where = QStringLiteral("sources");
    if (value.isUndefined())
        return true;
    if (!value.isArray())
        return fail(where, ProjectFile::tr("must be a list"));
    const QJsonArray array = value.toArray();
    for (int i = 0; i < array.size(); ++i) {
        if (!readSource(element(where, i), array.at(i)))
            return false;
    }
    return true;
}

bool Reader::readOptions(const QJsonValue &value)
{
    const QString where = QStringLiteral("options");
    if (value.isUndefined())
        return true;
    if (!value.isObject())
        return fail(where, ProjectFile::tr("must be an object"));
    const QJsonObject object = value.toObject();
    if (!checkKeys(where, object, optionNames()))
        return false;
    for (auto it = object.begin(); it != object.end(); ++it) {
        if (!readOption(it.key(), it.value()))
            return false;
    }
    return true;
}

bool Reader::readOption(const QString &name, const QJsonValue &value)
{
    const QString where = member(QStringLiteral("options"), name);
    QVariant option = value.toVariant();
    if (value.isString() || value.isArray()) {
        QString text;
        QStringList texts;
        const bool read =
            value.isString() ? readText(where, value, &text) : readTexts(where, value, &texts);
        if (!read)
            return false;
        option = value.isString() ? QVariant(text) : QVariant(texts);
    }
    QString problem;
    if (!normalizeOption(name, &option, &problem))
        return fail(where, problem);
    m_project.options.insert(name, option);
    return true;
}

bool Reader::readPaths(const QString &where, const QJsonValue &value, QStringList *paths)
{
    QStringList texts;
    if (!readTexts(where, value, &texts))
        return false;
    for (int i = 0; i < texts.size(); ++i) {
        QString path;
        if (!readPath(element(where, i), texts.at(i), &path))
            return false;
        paths->append(path);
    }
    return true;
}

bool Reader::readMacros(const QJsonValue &value)
{
    const QString where = QStringLiteral("macros");
    if (!readTexts(where, value, &m_project.macros))
        return false;
    for (int i = 0; i < m_project.macros.size(); ++i) {
        if (!isMacroDefinition(m_project.macros.at(i)))
            return fail(element(where, i), ProjectFile::tr("must be NAME or NAME=VALUE"));
    }
    return true;
}

bool Reader::readDevice(const QJsonValue &value)
{
    const QString where = QStringLiteral("device");
    if (value.isUndefined())
        return true;
    if (!value.isObject())
        return fail(where, ProjectFile::tr("must be an object"));
    const QJsonObject object = value.toObject();
    const QStringList known = {QStringLiteral("family"), QStringLiteral("package"),
                               QStringLiteral("speedGrade"), QStringLiteral("name")};
    DEV::DeviceArg &device = m_project.device;
    QString *const fields[] = {&device.family, &device.package, &device.speedGrade,
                               &device.deviceName};
    if (!checkKeys(where, object, known))
        return false;
    for (int i = 0; i < known.size(); ++i) {
        if (!readText(member(where, known[i]), object.value(known[i]), fields[i]))
            return false;
    }
    return true;
}

QString positionOf(const QByteArray &content, int offset)
{
    const QByteArray before = content.left(offset);
    const int line = before.count('\n') + 1;
    const int column = QString::fromUtf8(before.mid(before.lastIndexOf('\n') + 1)).size() + 1;
    return QStringLiteral("%1:%2").arg(QString::number(line), QString::number(column));
}

QString storedPath(const QString &workingDir, const QString &path)
{
    const QString prefix =
        workingDir.endsWith(QLatin1Char('/')) ? workingDir : workingDir + QLatin1Char('/');
    return path.startsWith(prefix) ? path.mid(prefix.size()) : path;
}

QJsonArray pathsToJson(const QString &folder, const QStringList &paths)
{
    QJsonArray stored;
    for (const QString &path : paths)
        stored.append(storedPath(folder, path));
    return stored;
}

QJsonArray sourcesToJson(const Project &project, const QString &folder)
{
    QJsonArray sources;
    for (const ProjectSource &source : project.sources) {
        sources.append(QJsonObject{{QStringLiteral("file"), storedPath(folder, source.path)},
                                   {QStringLiteral("type"), fileTypeName(source.type)},
                                   {QStringLiteral("enabled"), source.enabled}});
    }
    return sources;
}

QJsonObject optionsToJson(const Project &project)
{
    QJsonObject options;
    for (const QString &name : optionNames()) {
        if (project.options.contains(name))
            options.insert(name, QJsonValue::fromVariant(project.options.value(name)));
    }
    return options;
}

QJsonObject deviceToJson(const DEV::DeviceArg &device)
{
    return {{QStringLiteral("family"), device.family},
            {QStringLiteral("package"), device.package},
            {QStringLiteral("speedGrade"), device.speedGrade},
            {QStringLiteral("name"), device.deviceName}};
}

QByteArray toJson(const Project &project)
{
    const QString folder = QFileInfo(project.filePath).absolutePath();
    QJsonObject root{
        {QStringLiteral("version"), FormatVersion},
        {QStringLiteral("name"), project.name},
        {QStringLiteral("top"), project.options.value(QLatin1String(OPT::TOPMODULE)).toString()},
        {QStringLiteral("sources"), sourcesToJson(project, folder)},
        {QStringLiteral("options"), optionsToJson(project)},
        {QStringLiteral("libraryFiles"), pathsToJson(folder, project.libraryFiles)},
        {QStringLiteral("macros"), QJsonArray::fromStringList(project.macros)},
        {QStringLiteral("device"), deviceToJson(project.device)}};
    // Not in every file: applications that do not know these keys read the others still.
    if (!project.libraryFolders.isEmpty())
        root.insert(QStringLiteral("libraryFolders"), pathsToJson(folder, project.libraryFolders));
    if (!project.libraryExtensions.isEmpty())
        root.insert(QStringLiteral("libraryExtensions"),
                    QJsonArray::fromStringList(project.libraryExtensions));
    return QJsonDocument(root).toJson();
}

/// The first write to a disk that becomes full is short without being an error; the next one tells.
bool writeAll(QIODevice *device, const QByteArray &content)
{
    for (int position = 0; position < content.size();) {
        const qint64 written =
            device->write(content.constData() + position, content.size() - position);
        if (written <= 0)
            return false;
        position += int(written);
    }
    return true;
}

} // namespace

bool readProject(const QString &path, Project *project, QString *error)
{
    const QString shown = QDir::toNativeSeparators(path);
    QByteArray content;
    QString reason;
    if (!readWholeFile(path, &content, &reason)) {
        *error = ProjectFile::tr("Cannot read the project %1: %2").arg(shown, reason);
        return false;
    }
    QJsonParseError problem;
    const QJsonDocument document = QJsonDocument::fromJson(content, &problem);
    if (problem.error != QJsonParseError::NoError) {
        *error = QStringLiteral("%1:%2: %3")
                     .arg(shown, positionOf(content, problem.offset), problem.errorString());
        return false;
    }
    Reader reader(path);
    if (!document.isObject() || !reader.read(document.object())) {
        *error = QStringLiteral("%1: %2").arg(
            shown, document.isObject() ? reader.error()
                                       : ProjectFile::tr("a project file holds one object"));
        return false;
    }
    *project = reader.project();
    return true;
}

bool writeProject(const Project &project, QString *error)
{
    const Files::SizeLimitGuard guard;
    QSaveFile file(project.filePath);
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
        writeAll(&file, toJson(project)) && file.commit())
        return true;
    *error = ProjectFile::tr("Cannot save the project %1: %2")
                 .arg(QDir::toNativeSeparators(project.filePath), file.errorString());
    return false;
}

} // namespace TE
