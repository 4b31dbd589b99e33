// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "project.h"

#include "options.h"
#include "projectkeys.h"
#include "teconstants.h"

#include <files/sizelimitguard.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

namespace TE {

namespace {

/// Turns a project into the content of its file.
class ProjectWriter
{
    Q_DECLARE_TR_FUNCTIONS(TE::ProjectWriter)

public:
    /// @p project has to outlive the writer.
    explicit ProjectWriter(const Project &project);

    QByteArray content() const;

private:
    QString storedPath(const QString &path) const;
    QJsonArray storedPaths(const QStringList &paths) const;
    QJsonArray sources() const;
    QJsonObject options() const;
    QJsonObject device() const;

    const Project &m_project;
    QString m_folder; ///< That of the project file, with a slash at the end.
};

ProjectWriter::ProjectWriter(const Project &project)
    : m_project(project)
    , m_folder(QFileInfo(project.filePath).absolutePath())
{
    if (!m_folder.endsWith(QLatin1Char('/')))
        m_folder += QLatin1Char('/');
}

QByteArray ProjectWriter::content() const
{
    QJsonObject root{
        {QLatin1String(ProjectKey::Version), ProjectKey::FormatVersion},
        {QLatin1String(ProjectKey::Name), m_project.name},
        {QLatin1String(ProjectKey::Top),
         m_project.options.value(QLatin1String(OPT::TOPMODULE)).toString()},
        {QLatin1String(ProjectKey::Sources), sources()},
        {QLatin1String(ProjectKey::Options), options()},
        {QLatin1String(ProjectKey::LibraryFiles), storedPaths(m_project.libraryFiles)},
        {QLatin1String(ProjectKey::Macros), QJsonArray::fromStringList(m_project.macros)},
        {QLatin1String(ProjectKey::Device), device()}};
    // Written only when set, so that older versions, which refuse these keys, read other projects.
    if (!m_project.libraryFolders.isEmpty())
        root.insert(QLatin1String(ProjectKey::LibraryFolders),
                    storedPaths(m_project.libraryFolders));
    if (!m_project.libraryExtensions.isEmpty())
        root.insert(QLatin1String(ProjectKey::LibraryExtensions),
                    QJsonArray::fromStringList(m_project.libraryExtensions));
    return QJsonDocument(root).toJson();
}

QString ProjectWriter::storedPath(const QString &path) const
{
    return path.startsWith(m_folder) ? path.mid(m_folder.size()) : path;
}

QJsonArray ProjectWriter::storedPaths(const QStringList &paths) const
{
    QJsonArray stored;
    for (const QString &path : paths)
        stored.append(storedPath(path));
    return stored;
}

QJsonArray ProjectWriter::sources() const
{
    QJsonArray sources;
    for (const ProjectSource &source : m_project.sources) {
        QJsonObject entry{{QLatin1String(ProjectKey::File), storedPath(source.path)},
                          {QLatin1String(ProjectKey::Type), fileTypeName(source.type)},
                          {QLatin1String(ProjectKey::Enabled), source.enabled}};
        if (source.type == VhdlFile && source.library != QLatin1String(DefaultVhdlLibrary))
            entry.insert(QLatin1String(ProjectKey::Library), source.library);
        sources.append(entry);
    }
    return sources;
}

QJsonObject ProjectWriter::options() const
{
    QJsonObject options;
    for (const QString &name : Options::names()) {
        if (m_project.options.contains(name))
            options.insert(name, QJsonValue::fromVariant(m_project.options.value(name)));
    }
    return options;
}

QJsonObject ProjectWriter::device() const
{
    return {{QLatin1String(ProjectKey::Family), m_project.device.family},
            {QLatin1String(ProjectKey::Package), m_project.device.package},
            {QLatin1String(ProjectKey::SpeedGrade), m_project.device.speedGrade},
            {QLatin1String(ProjectKey::Name), m_project.device.deviceName}};
}

/// When a disk becomes full, the first write is short without an error; the next one fails.
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

bool writeProject(const Project &project, QString *error)
{
    const Files::SizeLimitGuard guard;
    QSaveFile file(project.filePath);
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
        writeAll(&file, ProjectWriter(project).content()) && file.commit())
        return true;
    *error = ProjectWriter::tr("Cannot save the project %1: %2")
                 .arg(QDir::toNativeSeparators(project.filePath), file.errorString());
    return false;
}

} // namespace TE
