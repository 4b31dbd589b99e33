// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFileSystemWatcher>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <memory>
#include <vector>

namespace TE {

/// Reports changes of files on disk, each file once for a burst of changes.
///
/// A file that is replaced has changed, once; one that is gone has changed when it is still missing
/// after a while, and again when it returns. While it is missing the nearest folder that exists is
/// watched for its return, and that of what a link names. A link that names another file has
/// changed, and a folder that is renamed takes its files away, unless it is one around all of them.
/// Costs one kernel watch a file and one a folder; a change costs time by the number of changed and
/// missing files and of folders and links, not by that of watched files.
class SourceWatcher : public QObject
{
    Q_OBJECT

public:
    explicit SourceWatcher(QObject *parent = nullptr);
    ~SourceWatcher() override;

    /// Watches exactly @p paths (absolute) from now on and forgets unreported changes.
    void setFiles(const QStringList &paths);
    void addFile(const QString &path);
    void removeFile(const QString &path);

Q_SIGNALS:
    /// The content of @p path is another one than before, or gone.
    void fileModified(const QString &path);

private:
    /// Some of the watched files. QFileSystemWatcher searches linearly, hence more than one.
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
    void startTimer();

    std::vector<std::unique_ptr<Shard>> m_shards;
    QHash<QString, Shard *> m_files; ///< Every file that is to be watched, missing ones included.
    QFileSystemWatcher m_folders;
    QHash<QString, int> m_homes;     ///< Folders of files, with the number of files.
    QHash<QString, QString> m_links; ///< What those files name that are links.
    QSet<QString> m_places;          ///< Folders that homes and links stand in.
    bool m_placesAreKnown = true;
    bool m_folderChanged = false; ///< Since the last check.
    QSet<QString> m_changed;      ///< Since the last check.
    QSet<QString> m_missing;
    QSet<QString> m_vanished; ///< Those missing ones whose absence is yet to be reported.
    QTimer m_timer;
    QTimer m_absence; ///< Runs from the last file that vanished on.
};

} // namespace TE
