// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "designmanager.h"

#include "options.h"
#include "sourcewatcher.h"
#include "teconstants.h"

#include <qutil/eventmanager.h>
#include <qutil/ievent.h>

#include <QDirIterator>
#include <QFileInfo>
#include <QHash>
#include <QSet>

#include <algorithm>

namespace TE {

namespace {

using Values = QMap<QString, QVariant>;

void raise(const char *event, const Values &values)
{
    QUtil::EventManager::instance()->send(QUtil::IEvent(QLatin1String(event), values));
}

bool isSame(const DEV::DeviceArg &a, const DEV::DeviceArg &b)
{
    return a.family == b.family && a.package == b.package && a.speedGrade == b.speedGrade &&
           a.deviceName == b.deviceName;
}

int libraryFileType(const QString &path)
{
    const int type = fileTypeOf(path);
    return isDesignSource(type) ? type : int(VerilogFile);
}

/// Raises the change of the option @p name. Views need not know it, so the change of the include
/// path follows, after which every view reads the design again.
void raiseReadingChange(const char *name)
{
    for (const char *option : {name, OPT::INCLUDEPATH})
        raise(E_OPTION_CHANGE, {{QLatin1String(K_OPTION), QLatin1String(option)}});
}

void raiseLibraryChange(const QStringList &former, const QStringList &current)
{
    bool isOtherSet = false;
    for (const QString &path : former) {
        if (!current.contains(path)) {
            isOtherSet = true;
            raise(E_FILE_REMOVE,
                  {{QLatin1String(K_FILE), path}, {QLatin1String(K_TYPE), libraryFileType(path)}});
        }
    }
    for (const QString &path : current) {
        if (!former.contains(path)) {
            isOtherSet = true;
            raise(E_FILE_ADD, {{QLatin1String(K_FILE), path}});
        }
    }
    // The order decides which definition of a module counts.
    if (!isOtherSet && !current.isEmpty())
        raise(E_FILE_MODIFIED, {{QLatin1String(K_FILE), current.first()}});
}

} // namespace

struct DesignManager::Private
{
    QString absolute(const QString &path) const { return absolutePathIn(project, path); }
    QStringList absolutePaths(const QStringList &paths) const
    {
        QStringList absolutePaths;
        for (const QString &path : paths)
            absolutePaths.append(absolute(path));
        return absolutePaths;
    }
    /// The source at the absolute @p path, null when there is none.
    ProjectSource *find(const QString &path)
    {
        const auto it = indexes.constFind(path);
        return it == indexes.constEnd() ? nullptr : &project.sources[*it];
    }
    void index()
    {
        indexes.clear();
        indexes.reserve(project.sources.size());
        for (int i = 0; i < project.sources.size(); ++i)
            indexes.insert(project.sources.at(i).path, i);
    }
    bool isInLibraryFolder(const QString &path) const
    {
        const QStringList extensions = libraryExtensionsOf(project);
        return project.libraryFolders.contains(QFileInfo(path).path()) &&
               std::any_of(extensions.begin(), extensions.end(),
                           [&path](const QString &extension) { return path.endsWith(extension); });
    }
    /// The sources come first, in case the system has too few watches for the libraries.
    void watchAll()
    {
        QStringList paths;
        for (const ProjectSource &source : qAsConst(project.sources))
            paths.append(source.path);
        paths += project.libraryFiles;
        for (const QString &folder : qAsConst(project.libraryFolders)) {
            QDirIterator files(folder, QDir::Files | QDir::Hidden);
            while (files.hasNext()) {
                if (isInLibraryFolder(files.next()))
                    paths.append(files.filePath());
            }
        }
        paths.removeDuplicates();
        watcher->setFiles(paths);
    }
    /// Stops watching @p path unless it is still a source or a library file.
    void unwatch(const QString &path)
    {
        if (!indexes.contains(path) && !project.libraryFiles.contains(path) &&
            !isInLibraryFolder(path))
            watcher->removeFile(path);
    }

    Project project;
    bool hasProject = false;
    QHash<QString, int> indexes;      ///< Of project.sources, by path.
    SourceWatcher *watcher = nullptr; ///< Owned by the design manager.
};

DesignManager::DesignManager()
    : d(std::make_unique<Private>())
{
    d->watcher = new SourceWatcher(this);
    // A file that is deleted on disk counts as modified, not as removed: it still belongs to the
    // project, and views ignore disabled files in this event only.
    connect(d->watcher, &SourceWatcher::fileModified, this, [](const QString &path) {
        raise(E_FILE_MODIFIED, {{QLatin1String(K_FILE), path}});
    });
}

DesignManager::~DesignManager() = default;

QMap<QString, QVariant> DesignManager::getSourceFileInfo() const
{
    return d->hasProject ? designInfoOf(d->project) : QMap<QString, QVariant>();
}

FileInfo DesignManager::getFileInfo(const QString &file) const
{
    const QString path = d->absolute(file);
    if (const ProjectSource *source = d->find(path))
        return {source->type, source->enabled};
    if (d->project.libraryFiles.contains(path) || d->isInLibraryFolder(path))
        return {libraryFileType(path), true};
    return {};
}

QVariant DesignManager::getOptionValue(const QString &name) const
{
    return optionValueOf(d->project, name);
}

QString DesignManager::workingDir() const
{
    return d->project.workingDir;
}

bool DesignManager::hasProject() const
{
    return d->hasProject;
}

const Project &DesignManager::project() const
{
    return d->project;
}

void DesignManager::setProject(const Project &project)
{
    d->project = project;
    d->hasProject = true;
    d->index();
    d->watchAll();
    Q_EMIT projectChanged();
}

void DesignManager::closeProject()
{
    d->project = Project();
    d->hasProject = false;
    d->indexes.clear();
    d->watcher->setFiles({});
    Q_EMIT projectChanged();
}

bool DesignManager::addFile(const QString &path)
{
    return addFile(path, fileTypeOf(path));
}

bool DesignManager::addFile(const QString &path, int type)
{
    const QString absolutePath = d->absolute(path);
    if (!d->hasProject || d->indexes.contains(absolutePath))
        return false;
    d->indexes.insert(absolutePath, d->project.sources.size());
    d->project.sources.append({absolutePath, type, true});
    d->watcher->addFile(absolutePath);
    raise(E_FILE_ADD, {{QLatin1String(K_FILE), absolutePath}});
    Q_EMIT projectChanged();
    return true;
}

bool DesignManager::removeFile(const QString &path)
{
    return removeFiles({path});
}

bool DesignManager::removeFiles(const QStringList &paths)
{
    QSet<QString> wanted;
    for (const QString &path : paths)
        wanted.insert(d->absolute(path));
    QList<ProjectSource> kept;
    QList<ProjectSource> removed;
    for (const ProjectSource &source : qAsConst(d->project.sources))
        (wanted.contains(source.path) ? removed : kept).append(source);
    if (removed.isEmpty())
        return false;

    d->project.sources = kept;
    d->index();
    for (const ProjectSource &source : qAsConst(removed))
        d->unwatch(source.path);
    for (const ProjectSource &source : qAsConst(removed)) {
        raise(E_FILE_REMOVE,
              {{QLatin1String(K_FILE), source.path}, {QLatin1String(K_TYPE), source.type}});
    }
    Q_EMIT projectChanged();
    return true;
}

bool DesignManager::setFileEnabled(const QString &path, bool enabled)
{
    ProjectSource *source = d->find(d->absolute(path));
    if (!source || source->enabled == enabled)
        return false;
    source->enabled = enabled;
    raise(E_FILE_CH_ENABLE, {{QLatin1String(K_FILE), source->path},
                             {QLatin1String(K_TYPE), source->type},
                             {QLatin1String(K_ENABLE), enabled}});
    Q_EMIT projectChanged();
    return true;
}

bool DesignManager::setFileType(const QString &path, int type)
{
    ProjectSource *source = d->find(d->absolute(path));
    if (!source || source->type == type)
        return false;
    const int previous = std::exchange(source->type, type);
    source->library = QLatin1String(DefaultVhdlLibrary);
    raise(E_FILE_CH_TYPE, {{QLatin1String(K_FILE), source->path},
                           {QLatin1String(K_TYPE), type},
                           {QLatin1String(K_PREVIOUS), previous}});
    Q_EMIT projectChanged();
    return true;
}

bool DesignManager::setFileLibrary(const QString &path, const QString &library)
{
    ProjectSource *source = d->find(d->absolute(path));
    QString normal = library;
    if (!source || source->type != VhdlFile || !normalizeVhdlLibrary(&normal, nullptr) ||
        source->library == normal)
        return false;
    source->library = normal;
    raise(E_FILE_MODIFIED, {{QLatin1String(K_FILE), source->path}});
    Q_EMIT projectChanged();
    return true;
}

bool DesignManager::setOptionValue(const QString &name, const QVariant &value)
{
    QVariant normal = value;
    if (!d->hasProject || !Options::normalize(name, &normal, nullptr) ||
        getOptionValue(name) == normal)
        return false;
    d->project.options.insert(name, normal);
    if (name == QLatin1String(OPT::VHDL_Standard))
        raiseReadingChange(OPT::VHDL_Standard);
    else
        raise(E_OPTION_CHANGE, {{QLatin1String(K_OPTION), name}});
    Q_EMIT projectChanged();
    return true;
}

bool DesignManager::setLibraryFiles(const QStringList &paths)
{
    const QStringList entered = d->absolutePaths(paths);
    if (!d->hasProject || entered == d->project.libraryFiles)
        return false;
    const QStringList former = std::exchange(d->project.libraryFiles, entered);
    for (const QString &path : former)
        d->unwatch(path);
    for (const QString &path : entered)
        d->watcher->addFile(path);
    raiseLibraryChange(former, entered);
    Q_EMIT projectChanged();
    return true;
}

bool DesignManager::setLibraryFolders(const QStringList &paths)
{
    const QStringList entered = d->absolutePaths(paths);
    if (!d->hasProject || entered == d->project.libraryFolders)
        return false;
    d->project.libraryFolders = entered;
    d->watchAll();
    raiseReadingChange(OPT::LIBRARYFOLDERS);
    Q_EMIT projectChanged();
    return true;
}

bool DesignManager::setMacros(const QStringList &macros)
{
    if (!d->hasProject || macros == d->project.macros ||
        !std::all_of(macros.begin(), macros.end(), isMacroDefinition))
        return false;
    d->project.macros = macros;
    raiseReadingChange(OPT::MACROS);
    Q_EMIT projectChanged();
    return true;
}

bool DesignManager::setDevice(const DEV::DeviceArg &device)
{
    if (!d->hasProject || isSame(device, d->project.device))
        return false;
    d->project.device = device;
    raise(E_DEVICE_CHANGE, {});
    Q_EMIT projectChanged();
    return true;
}

} // namespace TE
