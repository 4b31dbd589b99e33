// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "project.h"

#include "options.h"
#include "projectkeys.h"
#include "teconstants.h"
#include "wholefile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include <algorithm>
#include <initializer_list>

namespace TE {

namespace {

/// A value of the document, and where it is, for messages.
struct Field
{
    QString where; ///< Empty for the document itself.
    QJsonValue value;
};

Field memberOf(const Field &object, const QString &key)
{
    return {object.where.isEmpty() ? key : object.where + QLatin1Char('.') + key,
            object.value.toObject().value(key)};
}

Field memberOf(const Field &object, const char *key)
{
    return memberOf(object, QString(QLatin1String(key)));
}

Field elementOf(const Field &list, int index)
{
    return {QStringLiteral("%1[%2]").arg(list.where, QString::number(index)),
            list.value.toArray().at(index)};
}

QStringList toStrings(std::initializer_list<const char *> keys)
{
    QStringList strings;
    for (const char *key : keys)
        strings.append(QLatin1String(key));
    return strings;
}

/// The keys of a project file.
QStringList projectKeys()
{
    return toStrings({ProjectKey::Version, ProjectKey::Name, ProjectKey::Top, ProjectKey::Sources,
                      ProjectKey::Options, ProjectKey::LibraryFiles, ProjectKey::Macros,
                      ProjectKey::Device, ProjectKey::LibraryFolders,
                      ProjectKey::LibraryExtensions});
}

/// Turns the document of a project file into a project. Every function returns false at the first
/// error and sets error() to what is wrong and where.
class ProjectReader
{
    Q_DECLARE_TR_FUNCTIONS(TE::ProjectReader)

public:
    explicit ProjectReader(const QString &path);

    bool read(const QJsonObject &document);
    const Project &project() const { return m_project; }
    QString error() const { return m_error; }

private:
    bool fail(const QString &where, const QString &what);
    bool checkKeys(const Field &object, const QStringList &known);
    bool checkObject(const Field &field, const QStringList &known);
    bool readVersion(const Field &field);
    bool readString(const Field &field, QString *string);
    bool readStrings(const Field &field, QStringList *strings);
    bool readName(const Field &field);
    bool readTop(const Field &field);
    bool readPath(const Field &field, QString *path);
    bool readPaths(const Field &field, QStringList *paths);
    bool readSources(const Field &field);
    bool readSource(const Field &field);
    bool readType(const Field &field, int *type);
    bool readFlag(const Field &field, bool *flag);
    bool readLibrary(const Field &field, ProjectSource *source);
    bool readOptions(const Field &field);
    bool readOption(const QString &name, const Field &field);
    bool readMacros(const Field &field);
    bool readDevice(const Field &field);

    Project m_project;
    QSet<QString> m_paths; ///< Of the sources read so far.
    QString m_error;
};

ProjectReader::ProjectReader(const QString &path)
{
    const QFileInfo info(path);
    m_project.filePath = QDir::cleanPath(info.absoluteFilePath());
    m_project.workingDir = QDir::cleanPath(info.absolutePath());
    m_project.name = info.completeBaseName();
}

bool ProjectReader::fail(const QString &where, const QString &what)
{
    m_error = QStringLiteral("%1: %2").arg(where, what);
    return false;
}

bool ProjectReader::read(const QJsonObject &document)
{
    const Field root = {QString(), document};
    const auto member = [&root](const char *key) { return memberOf(root, key); };
    // The version first: a newer one may have other keys.
    return readVersion(member(ProjectKey::Version)) && checkKeys(root, projectKeys()) &&
           readName(member(ProjectKey::Name)) && readTop(member(ProjectKey::Top)) &&
           readSources(member(ProjectKey::Sources)) && readOptions(member(ProjectKey::Options)) &&
           readPaths(member(ProjectKey::LibraryFiles), &m_project.libraryFiles) &&
           readMacros(member(ProjectKey::Macros)) && readDevice(member(ProjectKey::Device)) &&
           readPaths(member(ProjectKey::LibraryFolders), &m_project.libraryFolders) &&
           readStrings(member(ProjectKey::LibraryExtensions), &m_project.libraryExtensions);
}

bool ProjectReader::readVersion(const Field &field)
{
    if (field.value.toDouble() == ProjectKey::FormatVersion)
        return true;
    return fail(field.where, tr("must be %1, the version of project files that this application "
                                "reads")
                                 .arg(ProjectKey::FormatVersion));
}

bool ProjectReader::checkKeys(const Field &object, const QStringList &known)
{
    const QStringList keys = object.value.toObject().keys();
    for (const QString &key : keys) {
        if (!known.contains(key)) {
            return fail(memberOf(object, key).where,
                        tr("unknown key; known keys: %1").arg(known.join(QLatin1String(", "))));
        }
    }
    return true;
}

bool ProjectReader::checkObject(const Field &field, const QStringList &known)
{
    if (!field.value.isObject())
        return fail(field.where, tr("must be an object"));
    return checkKeys(field, known);
}

bool ProjectReader::readString(const Field &field, QString *string)
{
    if (field.value.isUndefined())
        return true;
    if (!field.value.isString())
        return fail(field.where, tr("must be a string"));
    const QString read = field.value.toString();
    const auto isControl = [](QChar c) { return c < QLatin1Char(' '); };
    if (std::any_of(read.begin(), read.end(), isControl) || !read.isValidUtf16())
        return fail(field.where, tr("must not contain control characters"));
    *string = read;
    return true;
}

bool ProjectReader::readStrings(const Field &field, QStringList *strings)
{
    if (field.value.isUndefined())
        return true;
    if (!field.value.isArray())
        return fail(field.where, tr("must be a list of strings"));
    const int count = field.value.toArray().size();
    for (int i = 0; i < count; ++i) {
        QString string;
        if (!readString(elementOf(field, i), &string))
            return false;
        strings->append(string);
    }
    return true;
}

bool ProjectReader::readName(const Field &field)
{
    QString &name = m_project.name;
    if (!readString(field, &name))
        return false;
    if (name.isEmpty() || name.contains(QLatin1Char('/')))
        return fail(field.where, tr("must not be empty or contain '/'"));
    return true;
}

bool ProjectReader::readTop(const Field &field)
{
    QString top;
    if (!readString(field, &top))
        return false;
    if (!top.isEmpty())
        m_project.options.insert(QLatin1String(OPT::TOPMODULE), top);
    return true;
}

bool ProjectReader::readPath(const Field &field, QString *path)
{
    QString read;
    if (!readString(field, &read))
        return false;
    if (read.isEmpty())
        return fail(field.where, tr("must be a path"));
    *path = QDir::cleanPath(QDir(m_project.workingDir).absoluteFilePath(read));
    return true;
}

bool ProjectReader::readPaths(const Field &field, QStringList *paths)
{
    QStringList read;
    if (!readStrings(field, &read))
        return false;
    for (int i = 0; i < read.size(); ++i) {
        QString path;
        if (!readPath(elementOf(field, i), &path))
            return false;
        paths->append(path);
    }
    return true;
}

bool ProjectReader::readSources(const Field &field)
{
    if (field.value.isUndefined())
        return true;
    if (!field.value.isArray())
        return fail(field.where, tr("must be a list"));
    const int count = field.value.toArray().size();
    for (int i = 0; i < count; ++i) {
        if (!readSource(elementOf(field, i)))
            return false;
    }
    return true;
}

bool ProjectReader::readSource(const Field &field)
{
    const Field file = memberOf(field, ProjectKey::File);
    ProjectSource source;
    if (!checkObject(field, toStrings({ProjectKey::File, ProjectKey::Type, ProjectKey::Enabled,
                                       ProjectKey::Library})) ||
        !readPath(file, &source.path))
        return false;
    source.type = fileTypeOf(source.path);
    if (!readType(memberOf(field, ProjectKey::Type), &source.type) ||
        !readFlag(memberOf(field, ProjectKey::Enabled), &source.enabled) ||
        !readLibrary(memberOf(field, ProjectKey::Library), &source))
        return false;
    if (m_paths.contains(source.path))
        return fail(file.where, tr("%1 is listed twice").arg(source.path));
    m_paths.insert(source.path);
    m_project.sources.append(source);
    return true;
}

bool ProjectReader::readType(const Field &field, int *type)
{
    if (field.value.isUndefined())
        return true;
    *type = fileTypeFromName(field.value.toString());
    return *type >= 0 ||
           fail(field.where,
                tr("must be one of %1").arg(fileTypeNames().join(QLatin1String(", "))));
}

bool ProjectReader::readFlag(const Field &field, bool *flag)
{
    if (!field.value.isUndefined() && !field.value.isBool())
        return fail(field.where, tr("must be true or false"));
    *flag = field.value.toBool(*flag);
    return true;
}

/// The type of @p source must be known.
bool ProjectReader::readLibrary(const Field &field, ProjectSource *source)
{
    if (field.value.isUndefined())
        return true;
    if (source->type != VhdlFile)
        return fail(field.where, tr("only VHDL files have a library; the type of this file is %1")
                                     .arg(fileTypeName(source->type)));
    QString problem;
    return readString(field, &source->library) &&
           (normalizeVhdlLibrary(&source->library, &problem) || fail(field.where, problem));
}

bool ProjectReader::readOptions(const Field &field)
{
    if (field.value.isUndefined())
        return true;
    if (!checkObject(field, Options::names()))
        return false;
    const QStringList names = field.value.toObject().keys();
    return std::all_of(names.begin(), names.end(), [this, &field](const QString &name) {
        return readOption(name, memberOf(field, name));
    });
}

bool ProjectReader::readOption(const QString &name, const Field &field)
{
    QVariant option = field.value.toVariant();
    if (field.value.isString()) {
        QString string;
        if (!readString(field, &string))
            return false;
        option = string;
    } else if (field.value.isArray()) {
        QStringList strings;
        if (!readStrings(field, &strings))
            return false;
        option = strings;
    }
    QString problem;
    if (!Options::normalize(name, &option, &problem))
        return fail(field.where, problem);
    m_project.options.insert(name, option);
    return true;
}

bool ProjectReader::readMacros(const Field &field)
{
    if (!readStrings(field, &m_project.macros))
        return false;
    for (int i = 0; i < m_project.macros.size(); ++i) {
        if (!isMacroDefinition(m_project.macros.at(i)))
            return fail(elementOf(field, i).where, tr("must be NAME or NAME=VALUE"));
    }
    return true;
}

bool ProjectReader::readDevice(const Field &field)
{
    if (field.value.isUndefined())
        return true;
    DEV::DeviceArg &device = m_project.device;
    const auto member = [&field](const char *key) { return memberOf(field, key); };
    return checkObject(field, toStrings({ProjectKey::Family, ProjectKey::Package,
                                         ProjectKey::SpeedGrade, ProjectKey::Name})) &&
           readString(member(ProjectKey::Family), &device.family) &&
           readString(member(ProjectKey::Package), &device.package) &&
           readString(member(ProjectKey::SpeedGrade), &device.speedGrade) &&
           readString(member(ProjectKey::Name), &device.deviceName);
}

QString positionOf(const QByteArray &content, int offset)
{
    const QByteArray before = content.left(offset);
    const int line = before.count('\n') + 1;
    const int column = QString::fromUtf8(before.mid(before.lastIndexOf('\n') + 1)).size() + 1;
    return QStringLiteral("%1:%2").arg(QString::number(line), QString::number(column));
}

} // namespace

bool readProject(const QString &path, Project *project, QString *error)
{
    const QString shown = QDir::toNativeSeparators(path);
    QByteArray content;
    QString reason;
    if (!WholeFile::read(path, &content, &reason)) {
        *error = ProjectReader::tr("Cannot read the project %1: %2").arg(shown, reason);
        return false;
    }
    QJsonParseError problem;
    const QJsonDocument document = QJsonDocument::fromJson(content, &problem);
    if (problem.error != QJsonParseError::NoError) {
        *error = QStringLiteral("%1:%2: %3")
                     .arg(shown, positionOf(content, problem.offset), problem.errorString());
        return false;
    }
    ProjectReader reader(path);
    if (!document.isObject() || !reader.read(document.object())) {
        *error = QStringLiteral("%1: %2").arg(
            shown, document.isObject() ? reader.error()
                                       : ProjectReader::tr("a project file holds one JSON object"));
        return false;
    }
    *project = reader.project();
    return true;
}

bool isProjectFile(const QString &path)
{
    QByteArray content;
    QString reason;
    if (!WholeFile::read(path, &content, &reason))
        return false;
    const QJsonObject document = QJsonDocument::fromJson(content).object();
    if (!document.value(QLatin1String(ProjectKey::Version)).isDouble())
        return false;
    const QStringList known = projectKeys();
    const QStringList keys = document.keys();
    return keys.contains(QLatin1String(ProjectKey::Sources)) ||
           std::all_of(keys.begin(), keys.end(),
                       [&known](const QString &key) { return known.contains(key); });
}

QStringList projectFilesIn(const QString &folder, QStringList *others)
{
    QStringList projects;
    const QFileInfoList files =
        QDir(folder).entryInfoList({QStringLiteral("*.json")}, QDir::Files, QDir::Name);
    for (const QFileInfo &file : files) {
        if (isProjectFile(file.filePath()))
            projects.append(file.filePath());
        else if (others)
            others->append(file.fileName());
    }
    return projects;
}

} // namespace TE
