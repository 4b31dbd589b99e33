// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFileSystemWatcher>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class QTimer;

namespace TE {

/// Reports changes of files on disk, once per file for a burst of changes.
///
/// A replaced file is reported once. A removed file is reported when it is still missing after half
/// a second, and again when it returns. While a file is missing, the nearest existing folder is
/// watched for its return; for a link, the folder of its target too. A link that gets another
/// target is reported. Renaming a folder removes its files, unless it contains all watched files.
///
/// Costs one kernel watch per file and per folder. The time for a change grows with the number of
/// changed and missing files, folders and links, not with the number of watched files.
class SourceWatcher : public QObject
{
    Q_OBJECT

public:
    explicit SourceWatcher(QObject *parent = nullptr);
    ~SourceWatcher() override;

    /// From now on watches exactly @p paths (absolute). Drops changes that are not reported yet.
    void setFiles(const QStringList &paths);
    void addFile(const QString &path);
    void removeFile(const QString &path);

Q_SIGNALS:
    /// The content of @p path changed, or the file is gone.
    void fileModified(const QString &path);

private:
    /// A part of the watched files: the search of a QFileSystemWatcher is linear.
    struct Shard
    {
        QFileSystemWatcher watcher;
        int count = 0;
    };

    Shard *shardWithRoom();
    void rearm(const QString &path);
    void onFileChanged(const QString &path);
    void check();
    void reportVanished();
    void report(const QSet<QString> &paths);
    void takeReturned(QSet<QString> *modified);
    void enter(const QString &path, Shard *shard);
    void findPlaces();
    void takeMoved();
    void watchFolders();
    void onFolderChanged();
    void startBurst();

    std::vector<std::unique_ptr<Shard>> m_shards;
    QHash<QString, Shard *> m_files; ///< Every file to watch, missing ones included.
    QFileSystemWatcher m_folders;
    QHash<QString, int> m_homes;     ///< Folders of the files, with the number of files.
    QHash<QString, QString> m_links; ///< The targets of the files that are links.
    QSet<QString> m_places;          ///< Folders that contain homes and links.
    bool m_placesAreKnown = true;
    bool m_folderChanged = false; ///< Since the last check.
    QSet<QString> m_changed;      ///< Since the last check.
    QSet<QString> m_missing;
    QSet<QString> m_vanished; ///< Missing files that are not reported yet.
    QTimer *m_burst;          ///< Started by the first change since the last check.
    QTimer *m_absence;        ///< Started anew by each file that vanishes.
};

} // namespace TE
