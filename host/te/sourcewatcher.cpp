// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "sourcewatcher.h"

#include <QFileInfo>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace TE {

namespace {

constexpr int BurstMilliseconds = 100;

/// Longer than a file is missing while an editor or a version control system replaces it.
constexpr int AbsenceMilliseconds = 500;

constexpr int ShardSize = 2048;

/// False for a folder that has taken the name of a file.
bool isThere(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() && !info.isDir();
}

QString folderOf(const QString &path)
{
    return QFileInfo(path).path();
}

/// The deepest folder that contains both, which may be one of them.
QString commonFolder(const QString &a, const QString &b)
{
    QString folder = a;
    while (folder != b && !b.startsWith(folder + QLatin1Char('/')) && folder != folderOf(folder))
        folder = folderOf(folder);
    return folder;
}

QString nearestFolder(const QString &path)
{
    QString folder = folderOf(path);
    while (!QFileInfo(folder).isDir() && folder != folderOf(folder))
        folder = folderOf(folder);
    return folder;
}

/// The folders in which @p path may come back. A link comes back by itself or by its target, which
/// may be a link as well.
QStringList foldersOfReturn(const QString &path)
{
    constexpr int MostLinks = 40; // As many as the system follows.
    QStringList folders = {nearestFolder(path)};
    QFileInfo info(path);
    for (int i = 0; i < MostLinks && info.isSymLink(); ++i) {
        info.setFile(info.symLinkTarget());
        folders.append(nearestFolder(info.filePath()));
    }
    return folders;
}

} // namespace

SourceWatcher::SourceWatcher(QObject *parent)
    : QObject(parent)
    , m_burst(new QTimer(this))
    , m_absence(new QTimer(this))
{
    m_burst->setSingleShot(true);
    m_burst->setInterval(BurstMilliseconds);
    connect(m_burst, &QTimer::timeout, this, &SourceWatcher::check);
    m_absence->setSingleShot(true);
    m_absence->setInterval(AbsenceMilliseconds);
    connect(m_absence, &QTimer::timeout, this, &SourceWatcher::reportVanished);
    connect(&m_folders, &QFileSystemWatcher::directoryChanged, this,
            &SourceWatcher::onFolderChanged);
}

SourceWatcher::~SourceWatcher() = default;

void SourceWatcher::setFiles(const QStringList &paths)
{
    m_burst->stop();
    m_absence->stop();
    m_changed.clear();
    m_missing.clear();
    m_vanished.clear();
    m_files.clear();
    m_homes.clear();
    m_links.clear();
    m_shards.clear();
    for (int first = 0; first < paths.size(); first += ShardSize) {
        const QStringList part = paths.mid(first, ShardSize);
        Shard *shard = shardWithRoom();
        shard->count = part.size();
        for (const QString &path : part)
            enter(path, shard);
        const QStringList unwatched = shard->watcher.addPaths(part);
        for (const QString &path : unwatched) {
            if (!isThere(path))
                m_missing.insert(path);
        }
    }
    findPlaces();
    watchFolders();
}

void SourceWatcher::addFile(const QString &path)
{
    if (m_files.contains(path))
        return;
    Shard *shard = shardWithRoom();
    ++shard->count;
    enter(path, shard);
    rearm(path);
    if (m_missing.contains(path))
        m_folders.addPaths(foldersOfReturn(path));
    m_placesAreKnown = false; // Found later, as more files may follow.
    startBurst();
}

void SourceWatcher::removeFile(const QString &path)
{
    Shard *shard = m_files.take(path);
    if (!shard)
        return;
    --shard->count;
    shard->watcher.removePath(path);
    m_changed.remove(path);
    m_missing.remove(path);
    m_vanished.remove(path);
    m_links.remove(path);
    const auto home = m_homes.find(folderOf(path));
    if (home != m_homes.end() && --*home == 0)
        m_homes.erase(home);
}

void SourceWatcher::enter(const QString &path, Shard *shard)
{
    if (!m_files.contains(path))
        ++m_homes[folderOf(path)];
    m_files.insert(path, shard);
    const QFileInfo info(path);
    if (info.isSymLink())
        m_links.insert(path, info.symLinkTarget());
}

/// The watch of a file does not notice that a folder around it is renamed or that a link to it is
/// replaced. These folders are watched for that.
void SourceWatcher::findPlaces()
{
    m_placesAreKnown = true;
    m_places.clear();
    for (auto link = m_links.cbegin(); link != m_links.cend(); ++link)
        m_places.insert(folderOf(link.key()));
    QString common = m_homes.isEmpty() ? QString() : m_homes.cbegin().key();
    for (auto home = m_homes.cbegin(); home != m_homes.cend(); ++home)
        common = commonFolder(common, home.key());
    for (auto home = m_homes.cbegin(); home != m_homes.cend(); ++home) {
        for (QString folder = home.key(); folder != common; folder = folderOf(folder))
            m_places.insert(folderOf(folder));
    }
}

SourceWatcher::Shard *SourceWatcher::shardWithRoom()
{
    if (m_shards.empty() || m_shards.back()->count >= ShardSize) {
        m_shards.push_back(std::make_unique<Shard>());
        connect(&m_shards.back()->watcher, &QFileSystemWatcher::fileChanged, this,
                &SourceWatcher::onFileChanged);
    }
    return m_shards.back().get();
}

/// Watches the file that has the name @p path now, which may be another one than before.
void SourceWatcher::rearm(const QString &path)
{
    Shard *shard = m_files.value(path);
    shard->watcher.removePath(path);
    if (!isThere(path))
        m_missing.insert(path);
    else
        shard->watcher.addPath(path);
}

void SourceWatcher::onFileChanged(const QString &path)
{
    m_changed.insert(path);
    startBurst();
}

void SourceWatcher::onFolderChanged()
{
    m_folderChanged = true;
    startBurst();
}

void SourceWatcher::startBurst()
{
    if (!m_burst->isActive())
        m_burst->start();
}

void SourceWatcher::check()
{
    QSet<QString> modified;
    if (std::exchange(m_folderChanged, false))
        takeMoved();
    if (!m_placesAreKnown)
        findPlaces();
    const QSet<QString> changed = std::exchange(m_changed, {});
    for (const QString &path : changed) {
        rearm(path);
        if (!m_missing.contains(path)) {
            modified.insert(path);
        } else {
            m_vanished.insert(path);
            m_absence->start();
        }
    }
    takeReturned(&modified);
    watchFolders();
    // Some may have come back just before their folder was watched.
    takeReturned(&modified);
    report(modified);
}

void SourceWatcher::reportVanished()
{
    QSet<QString> vanished = std::exchange(m_vanished, {});
    check(); // Some may be back.
    report(vanished.intersect(m_missing));
}

void SourceWatcher::report(const QSet<QString> &paths)
{
    QStringList sorted = paths.values();
    std::sort(sorted.begin(), sorted.end());
    for (const QString &path : qAsConst(sorted)) {
        if (m_files.contains(path))
            Q_EMIT fileModified(path);
    }
}

/// Adds the files of removed folders and the links with another target to the changed files.
void SourceWatcher::takeMoved()
{
    QSet<QString> gone;
    for (auto home = m_homes.cbegin(); home != m_homes.cend(); ++home) {
        if (!QFileInfo(home.key()).isDir())
            gone.insert(home.key());
    }
    for (auto file = m_files.cbegin(); !gone.isEmpty() && file != m_files.cend(); ++file) {
        if (!m_missing.contains(file.key()) && gone.contains(folderOf(file.key())))
            m_changed.insert(file.key());
    }
    for (auto link = m_links.begin(); link != m_links.end(); ++link) {
        const QString target = QFileInfo(link.key()).symLinkTarget();
        if (!m_missing.contains(link.key()) && target != *link)
            m_changed.insert(link.key());
        *link = target;
    }
}

void SourceWatcher::takeReturned(QSet<QString> *modified)
{
    QStringList returned;
    for (const QString &path : qAsConst(m_missing)) {
        if (isThere(path))
            returned.append(path);
    }
    for (const QString &path : qAsConst(returned)) {
        m_missing.remove(path);
        m_vanished.remove(path);
        rearm(path);
        if (!m_missing.contains(path))
            modified->insert(path);
    }
}

void SourceWatcher::watchFolders()
{
    QSet<QString> wanted = m_places;
    for (const QString &path : qAsConst(m_missing)) {
        const QStringList folders = foldersOfReturn(path);
        for (const QString &folder : folders)
            wanted.insert(folder);
    }
    const QStringList watched = m_folders.directories();
    for (const QString &folder : watched) {
        if (!wanted.remove(folder))
            m_folders.removePath(folder);
    }
    if (!wanted.isEmpty())
        m_folders.addPaths(wanted.values());
}

} // namespace TE
