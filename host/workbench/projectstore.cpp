// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "projectstore.h"

#include <core/viewmanager.h>
#include <files/regularfile.h>
#include <te/designmanager.h>
#include <te/teconstants.h>

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QScopedValueRollback>

namespace Workbench {

namespace {

QByteArray contentOf(const QString &path)
{
    constexpr qint64 LargestFile = 64 * 1024 * 1024; // Larger projects cannot be read.
    QByteArray content;
    QString error;
    Files::readRegularFile(path, LargestFile, &content, &error);
    return content;
}

} // namespace

ProjectStore::ProjectStore(TE::DesignManager *design, QObject *parent)
    : QObject(parent)
    , m_design(design)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &ProjectStore::save);
    connect(design, &TE::DesignManager::projectChanged, this, &ProjectStore::onProjectChanged);
}

void ProjectStore::setProject(const TE::Project &project)
{
    m_timer.stop();
    m_failed = false;
    m_content = project.filePath.isEmpty() ? QByteArray() : contentOf(project.filePath);
    setModified(false);
    const QScopedValueRollback<bool> replacing(m_isReplacing, true);
    m_design->setProject(project);
}

void ProjectStore::closeProject()
{
    m_timer.stop();
    setModified(false);
    const QScopedValueRollback<bool> replacing(m_isReplacing, true);
    m_design->closeProject();
}

void ProjectStore::onProjectChanged()
{
    if (m_isReplacing)
        return;
    setModified(true);
    if (!m_design->project().filePath.isEmpty() && !m_failed)
        m_timer.start();
}

bool ProjectStore::save()
{
    m_timer.stop();
    if (!m_modified)
        return true;
    const TE::Project project = m_design->project();
    m_failed = true;
    if (!mayOverwrite() || !write(project))
        return false;
    m_failed = false;
    m_content = contentOf(project.filePath);
    setModified(false);
    return true;
}

bool ProjectStore::write(const TE::Project &project)
{
    QString error;
    if (TE::writeProject(project, &error))
        return true;
    QMessageBox::critical(Core::ViewManager::dialogParent(), tr("Error"), error);
    return false;
}

bool ProjectStore::mayOverwrite()
{
    const QString path = m_design->project().filePath;
    if (!QFileInfo::exists(path) || contentOf(path) == m_content)
        return true;
    return QMessageBox::question(
               Core::ViewManager::dialogParent(), tr("Project Changed"),
               tr("The project file \"%1\" was changed by another program. Overwrite it?")
                   .arg(QDir::toNativeSeparators(path)),
               QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
}

bool ProjectStore::saveAs(const QString &path)
{
    TE::Project project = m_design->project();
    const QFileInfo info(path);
    QStringList includePaths =
        project.options.value(QLatin1String(TE::OPT::INCLUDEPATH)).toStringList();
    if (project.workingDir != info.absolutePath() && !includePaths.isEmpty()) {
        for (QString &includePath : includePaths)
            includePath = QDir::cleanPath(QDir(project.workingDir).absoluteFilePath(includePath));
        project.options.insert(QLatin1String(TE::OPT::INCLUDEPATH), includePaths);
    }
    project.filePath = info.absoluteFilePath();
    project.workingDir = info.absolutePath();
    project.name = info.completeBaseName();
    if (!write(project))
        return false;
    setProject(project);
    return true;
}

bool ProjectStore::mayClose()
{
    if (!m_modified)
        return true;
    if (!m_design->project().filePath.isEmpty() && save())
        return true;
    const QMessageBox::StandardButton answer = QMessageBox::question(
        Core::ViewManager::dialogParent(), tr("Save Project"),
        tr("Save the changes of the project \"%1\"?").arg(m_design->project().name),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    return answer == QMessageBox::Discard || (answer == QMessageBox::Save && askAndSaveAs());
}

bool ProjectStore::askAndSaveAs()
{
    const TE::Project &project = m_design->project();
    const QString path = QFileDialog::getSaveFileName(
        Core::ViewManager::dialogParent(), tr("Save Project As"),
        QDir(project.workingDir).filePath(project.name + QLatin1String(".json")),
        tr("Projects (*.json)"));
    return !path.isEmpty() && saveAs(path);
}

void ProjectStore::setModified(bool modified)
{
    if (m_modified == modified)
        return;
    m_modified = modified;
    Q_EMIT modifiedChanged(modified);
}

} // namespace Workbench
